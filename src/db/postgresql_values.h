#pragma once

#include "db/driver.h"

#include <libpq-fe.h>

namespace orvo {

/// The values of one statement as libpq takes them: all as text. Looks into what it was made of.
class text_fields {
public:
    explicit text_fields(const std::vector<bound_value>& bound);

    const char* const* data() const { return fields_.data(); }
    int count() const { return static_cast<int>(fields_.size()); }

private:
    std::vector<std::string> numbers_;
    std::vector<const char*> fields_;
};

std::vector<Oid> types_of(const ready_statement& text);

/// Hands the rows of a result, or of its next part, to a sink. False where the sink has enough.
class row_feeder {
public:
    explicit row_feeder(row_sink& to) : to_{to} {}
    bool hand_on(const PGresult* result);

private:
    row_sink& to_;
    std::vector<cell> row_;
    bool begun_ = false;
};

} // namespace orvo
