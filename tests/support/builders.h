#pragma once

#include "db/connection.h"

#include <QString>

#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace orvo {

/// A row in the making: columns that are not named keep the default of the database.
class row_in_the_making {
public:
    /// Stores the row. Returns the number that an identity column was given; 0 where the table has none.
    qint64 store_in(connection& db) const;

protected:
    row_in_the_making(database where, std::string_view table) : where_{where}, table_{table} {}

    /// Throws std::logic_error where the table has no such column.
    void set(std::string_view column, QString value);

private:
    database where_;
    std::string table_;
    std::vector<std::pair<std::string, QString>> fields_;
};

template <typename self>
class row_builder : public row_in_the_making {
public:
    self& with(std::string_view column, const QString& value)
    {
        set(column, value);
        return static_cast<self&>(*this);
    }
    self& with(std::string_view column, qint64 value) { return with(column, QString::number(value)); }

protected:
    using row_in_the_making::row_in_the_making;
};

/// Any row: a_row{"education_tbl"}.with("detail_name", "...").store_in(db).
struct a_row : row_builder<a_row> {
    explicit a_row(std::string_view table, database where = database::server) : row_builder{where, table} {}
};

/// A member of branch 10 and kind 20, in the register or, by the same columns, in the copy of the last
/// search.
struct a_member : row_builder<a_member> {
    explicit a_member(const QString& pers_no);

    a_member& named(const QString& name) { return with("pers_name", name); }
    a_member& of_branch(int code) { return with("code_bran", code); }
    a_member& of_kind(int code_member) { return with("code_member", code_member); }
    a_member& licensed(const QString& lic_no) { return with("lic_no", lic_no); }
};

/// The member's workplace at present; `former()` makes it an earlier one.
struct a_workplace : row_builder<a_workplace> {
    explicit a_workplace(const QString& pers_no);

    a_workplace& named(const QString& name) { return with("company_name", name); }
    a_workplace& former() { return with("primary_flag", 0); }
    /// The kind of workplace, from the coarse to the fine.
    a_workplace& of_division(int part, int great, int small);
};

/// What a member owes for one year, not yet paid.
struct a_dues_year : row_builder<a_dues_year> {
    a_dues_year(const QString& pers_no, const QString& year, qint64 dues = 50'000);

    a_dues_year& of_kind(int code_member) { return with("code_member", code_member); }
    a_dues_year& paid_in_full() { return with("yet_money", 0).with("incom_flag", QStringLiteral("1")); }
};

/// One payment for a year, the same day at the head office and the branch: 15 March of a year that is one.
struct a_payment : row_builder<a_payment> {
    a_payment(const QString& pers_no, const QString& year, qint64 money = 50'000);
};

/// A pledge of a lifetime fee, made on a day, nothing of it paid.
struct a_pledge : row_builder<a_pledge> {
    a_pledge(const QString& pers_no, const QString& con_day, qint64 amount = 1'000'000);
};

/// An operator of head office with all rights, whose password is "secret".
struct an_operator : row_builder<an_operator> {
    explicit an_operator(const QString& id);

    an_operator& of_branch(int code) { return with("code_bran", code); }
    an_operator& with_rights(int administration, int education);
};

/// Branches of the codes 1 to `count`, all of the name 서울.
void load_branches(connection& db, int count);

} // namespace orvo
