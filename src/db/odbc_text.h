#pragma once

#include "db/open.h"

namespace orvo {

/// The text that connects: for FreeTDS or, by the driver's name, for another one.
QString odbc_connection_text(const server_address& server, database where);

/// What FreeTDS is told in a file of its own, as its connection text has no word for it: the authorities by
/// which it is to know the server. Empty where the text says all.
QByteArray freetds_section(const server_address& server);

/// Puts that section where FreeTDS finds it, for as long as this process lives.
void provide_freetds_section(const QByteArray& section);

} // namespace orvo
