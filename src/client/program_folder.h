#pragma once

#include <QString>

namespace orvo {

/// The folder that holds the local file, the log and the configuration.
struct program_folder {
    QString path;
    bool is_writable = true;

    QString file(const QString& name) const { return path + u'/' + name; }
};

/// The folder that ORVO_HOME names; else the one of the running program where it holds `conf`; else one in
/// the user's data location, filled from the installed templates at its first use.
program_folder find_program_folder();

/// The given folder, made where it is missing.
program_folder open_program_folder(const QString& path);

/// Puts the installed templates into the folder, where it has no file of the name.
void fill_from_templates(const program_folder& folder);

} // namespace orvo
