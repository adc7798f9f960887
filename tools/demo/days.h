#pragma once

#include "demo/random.h"

#include <QDate>

#include <string>

namespace orvo::demo {

std::string stored(QDate day);       ///< "yyyymmdd"
std::string stored_month(QDate day); ///< "yyyymm"
/// A day between the two, both of them included; the first where they stand the wrong way round.
QDate day_between(random_stream& random, QDate first, QDate last);

} // namespace orvo::demo
