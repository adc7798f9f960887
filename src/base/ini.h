#pragma once

#include <QString>

#include <optional>

namespace orvo {

/// The text of `key` in `section` of an INI file, as Windows profiles are read: names without case, blanks
/// around the value and one pair of quotes dropped, `;` in front makes a comment. Nothing where file, section
/// or key is missing. Read in UTF-8.
std::optional<QString> ini_value(const QString& path, QStringView section, QStringView key);

} // namespace orvo
