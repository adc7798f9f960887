#pragma once

#include "client/program_folder.h"
#include "db/open.h"

#include <QString>

namespace orvo {

/// The text of `key` in `section` of an INI file in the folder `conf`, at most 255 characters of it. The
/// section is looked up in upper case. A missing key, section or file gives "Default".
QString read_conf_value(const program_folder& folder, const QString& file, const QString& section,
                        const QString& key);

/// Where the server is, from `conf/connection.ini`, section [SERVER]; the embedded engine in the program
/// folder where the file or a key is missing. Throws db_failure on an engine that does not exist.
server_address read_server_address(const program_folder& folder);

/// What a configuration leaves open that it should not.
enum class weakness {
    readable_by_others, ///< the file holds the server's password
    no_tls ///< of a server: nothing is said, so that a line in clear is taken where it is offered
};
std::vector<weakness> weaknesses_of(const program_folder& folder);

/// The mail domain with which the field of a new member's address begins: `domain` in [MAIL] of
/// association.ini.
QString default_mail_domain(const program_folder& folder);

} // namespace orvo
