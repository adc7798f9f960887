#pragma once

#include "db/connection.h"

#include <QString>

#include <vector>

namespace orvo {

struct found_address {
    QString post;    ///< the first and the last three characters of the postal code, with a hyphen between
    QString address; ///< the parts joined by single blanks, the empty ones too
};

/// The addresses whose neighbourhood holds the word, wildcards included, in the order of the postal table.
std::vector<found_address> find_addresses(connection& local, const QString& dong);

/// Whether this workstation has postal codes at all.
bool has_postal_codes(connection& local);

} // namespace orvo
