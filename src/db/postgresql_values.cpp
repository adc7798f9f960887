#include "db/postgresql_values.h"

namespace orvo {

namespace {

constexpr Oid oid_text = 25;
constexpr Oid oid_int8 = 20;

} // namespace

text_fields::text_fields(const std::vector<bound_value>& bound)
    : numbers_(bound.size()), fields_(bound.size())
{
    for (std::size_t i = 0; i < bound.size(); ++i) {
        if (const auto* number = std::get_if<std::int64_t>(&bound[i]))
            fields_[i] = (numbers_[i] = std::to_string(*number)).c_str();
        else
            fields_[i] = std::get<std::string>(bound[i]).c_str();
    }
}

std::vector<Oid> types_of(const ready_statement& text)
{
    std::vector<Oid> types;
    for (const parameter& each : text.parameters)
        types.push_back(each.is_number() ? oid_int8 : oid_text);
    return types;
}

bool row_feeder::hand_on(const PGresult* result)
{
    const int count = PQnfields(result);
    if (!begun_) {
        column_names names;
        for (int i = 0; i < count; ++i)
            names.emplace_back(PQfname(result, i));
        to_.begin(names);
        row_.resize(static_cast<std::size_t>(count));
        begun_ = true;
    }
    const int rows = PQntuples(result);
    for (int r = 0; r < rows; ++r) {
        for (int i = 0; i < count; ++i) {
            const auto size = static_cast<std::size_t>(PQgetlength(result, r, i));
            row_[static_cast<std::size_t>(i)] =
                size == 0 && PQgetisnull(result, r, i)
                    ? cell{}
                    : cell::of(std::string_view{PQgetvalue(result, r, i), size});
        }
        if (!to_.take(row_))
            return false;
    }
    return true;
}

} // namespace orvo
