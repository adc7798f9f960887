#include "support/builders.h"

#include "db/schema/schema.h"

#include <algorithm>
#include <stdexcept>

namespace orvo {

void row_in_the_making::set(std::string_view column, QString value)
{
    if (!find_table(where_, table_) || !find_table(where_, table_)->find(column))
        throw std::logic_error{table_ + " has no column " + std::string{column}};
    const auto found =
        std::find_if(fields_.begin(), fields_.end(), [&](const auto& each) { return each.first == column; });
    if (found != fields_.end())
        found->second = std::move(value);
    else
        fields_.emplace_back(column, std::move(value));
}

qint64 row_in_the_making::store_in(connection& db) const
{
    std::string names;
    std::string slots_of_values;
    values given;
    for (const auto& [column, value] : fields_) {
        names += (names.empty() ? "" : ",") + column;
        slots_of_values += (slots_of_values.empty() ? "'{" : ",'{") + column + "}'";
        given.add({column, value});
    }
    db.write("insert into " + table_ + "(" + names + ") values (" + slots_of_values + ")", given);
    for (const column& each : find_table(where_, table_)->columns)
        if (each.type == column_type::identity)
            return db.number("select max(" + std::string{each.name} + ") as newest from " + table_);
    return 0;
}

a_member::a_member(const QString& pers_no) : row_builder{database::server, "person_m_tbl"}
{
    with("pers_no", pers_no).named(QStringLiteral("김영희")).of_branch(10).of_kind(20);
    with("regi_date", QStringLiteral("20200302")).with("pers_sex", QStringLiteral("2"));
}

a_workplace::a_workplace(const QString& pers_no) : row_builder{database::server, "company"}
{
    with("pers_no", pers_no).named(QStringLiteral("한빛초등학교")).of_division(1, 10, 10);
    with("pers_in_date", QStringLiteral("202003")).with("primary_flag", 1);
}

a_workplace& a_workplace::of_division(int part, int great, int small)
{
    return with("code_part", part).with("code_great", great).with("code_small", small);
}

a_dues_year::a_dues_year(const QString& pers_no, const QString& year, qint64 dues)
    : row_builder{database::server, "dues_h_tbl"}
{
    with("pers_no", pers_no).of_kind(20).with("val_year", year);
    with("mem_dues", dues).with("yet_money", dues).with("incom_flag", QStringLiteral("0"));
    with("regi_date", year.left(4) + QStringLiteral("0102"));
}

a_payment::a_payment(const QString& pers_no, const QString& year, qint64 money)
    : row_builder{database::server, "dues_b_tbl"}
{
    with("pers_no", pers_no).with("code_member", 20).with("val_year", year).with("pres_money", money);
    with("code_receipt", 10).with("pres_let_day", QStringLiteral("20261122"));
    const QString day = (year.size() == 4 && year[0].isDigit() ? year : QStringLiteral("2026")) + "0315";
    with("pers_mem_day", day).with("pers_mem_b_day", day);
}

a_pledge::a_pledge(const QString& pers_no, const QString& con_day, qint64 amount)
    : row_builder{database::server, "contract"}
{
    with("con_day", con_day).with("pers_no", pers_no).with("con_amount", amount);
    with("con_check", QStringLiteral("0")).with("con_finish", QStringLiteral("0"));
}

an_operator::an_operator(const QString& id) : row_builder{database::server, "admin_tbl"}
{
    with("admin_id", id)
        .with("admin_pass", QStringLiteral("secret"))
        .with("log_name", QStringLiteral("이정은"));
    of_branch(0).with_rights(1, 1).with("author3", 1);
}

an_operator& an_operator::with_rights(int administration, int education)
{
    return with("author1", administration).with("author2", education);
}

void load_branches(connection& db, int count)
{
    int code = 0;
    db.load("branch_code", {"code_bran", "branch_name"}, [&](std::vector<cell>& fields) {
        if (code == count)
            return false;
        fields.push_back(cell::of(std::int64_t{++code}));
        fields.push_back(cell::of(std::string_view{"서울"}));
        return true;
    });
}

} // namespace orvo
