#include "members/rules/workplaces.h"

#include <algorithm>

namespace orvo {

namespace {

const QString others = QStringLiteral("다른 근무처의 우선 표시");
const QString the_row = QStringLiteral("근무처");

std::optional<rows> some(rows found)
{
    if (found.empty())
        return {};
    return found;
}

} // namespace

rows find_workplaces(connection& db, const QString& key)
{
    return db.read("select distinct * from company where company_name like '%{key}%'", {{"key", key}});
}

std::optional<rows> read_workplace(connection& db, const QString& company_id)
{
    return some(db.read("select * from company where company_id='{id}'", {{"id", company_id}}));
}

std::optional<rows> read_workplace_of(connection& db, const QString& pers_no, const QString& company_id)
{
    return some(
        db.read("select * from company where pers_no='{selected_pers_no}' and company_id='{cur_company_id}'",
                {{"selected_pers_no", pers_no}, {"cur_company_id", company_id}}));
}

void add_workplace(save_steps& save, const QString& pers_no, const workplace_data& workplace,
                   const QString& today)
{
    if (workplace.primary_flag == QLatin1String("1"))
        save.write(others, "update company set primary_flag='0' where pers_no='{selected_pers_no}'",
                   {{"selected_pers_no", pers_no}});
    const std::vector<column_value> row = workplace_columns(pers_no, workplace, today);
    save.write(the_row, insert_text("company", row), slot_values(row));
}

void change_workplace(save_steps& save, const QString& pers_no, const QString& company_id,
                      const std::vector<column_value>& columns)
{
    values given = slot_values(columns);
    given.add({"cur_company_id", company_id});
    save.write(the_row, update_text("company", columns) + " where company_id='{cur_company_id}'", given);
    if (columns.back().value == QLatin1String("1")) // primary_flag
        save.write(others,
                   "update company set primary_flag='0' where pers_no='{selected_pers_no}' and "
                   "company_id<>'{cur_company_id}'",
                   {{"selected_pers_no", pers_no}, {"cur_company_id", company_id}});
}

bool is_workplace_stored(const save_steps& save)
{
    return save.stored().contains(the_row);
}

void delete_workplace(save_steps& save, const QString& pers_no, const QString& company_id)
{
    save.write(the_row,
               "delete from company where pers_no='{selected_pers_no}' and company_id='{cur_company_id}'",
               {{"selected_pers_no", pers_no}, {"cur_company_id", company_id}});
}

} // namespace orvo
