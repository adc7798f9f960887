#include "db/hindrance.h"

#include <algorithm>
#include <initializer_list>

namespace orvo {

namespace {

bool is_one_of(const QString& code, std::initializer_list<const char*> known)
{
    return std::ranges::any_of(known, [&code](const char* each) { return code == QLatin1String{each}; });
}

hindrance of_two(bool is_missing, bool is_forbidden)
{
    return is_missing ? hindrance::no_table : is_forbidden ? hindrance::no_right : hindrance::other;
}

} // namespace

hindrance hindrance_of(engine kind, const db_failure& failure)
{
    const QString& code = failure.code();
    switch (kind) {
    case engine::embedded: // which knows no rights
        return of_two(failure.text().startsWith(QLatin1String{"no such table"}), false);
    case engine::postgresql:
        return of_two(code == QLatin1String{"42P01"}, code == QLatin1String{"42501"});
    case engine::sqlserver:
        break;
    }
    // To a table, to a column of it, to a kind of statement; to the table's definition, in two ways.
    return of_two(code == QLatin1String{"208"}, is_one_of(code, {"229", "230", "262", "1088", "4902"}));
}

} // namespace orvo
