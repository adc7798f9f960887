#include "members/rules/workplaces.h"

#include <algorithm>

namespace orvo {

namespace {

constexpr save_step others{"others", "다른 근무처의 우선 표시"};
constexpr save_step the_row{"workplace", "근무처"};

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

question<QString> workplace_ids_of(const QString& pers_no)
{
    return {{"select company_id from company where pers_no='{selected_pers_no}'",
             {{"selected_pers_no", pers_no}}},
            [](const rows& found) { return keys_of(found, "company_id"); }};
}

namespace {

constexpr lookalikes_of_row as_the_new_one{
    "select company_id from company where pers_no='{pers_no}' and company_name='{company_name}' and "
    "company_add='{company_add}' and regi_date='{regi_date}'",
    "company_id"};

bool is_primary(const save& of)
{
    return of.given("primary_flag") == QLatin1String("1");
}

void store_new(save& of)
{
    static const std::string text = insert_text("company", workplace_columns({}, {}, {}));
    // Behind the new row it would take the mark from that.
    if (is_primary(of) && !of.finds(as_the_new_one))
        of.write(others, "update company set primary_flag='0' where pers_no='{pers_no}'");
    of.write_once(the_row, text, as_the_new_one);
}

void store_changed(save& of)
{
    static const std::string text =
        update_text("company", workplace_columns({}, {}, {})) + " where company_id='{cur_company_id}'";
    of.write(the_row, text);
    if (is_primary(of))
        of.write(others, "update company set primary_flag='0' where pers_no='{pers_no}' and "
                         "company_id<>'{cur_company_id}'");
}

void store_deleted(save& of)
{
    of.write(the_row,
             "delete from company where pers_no='{selected_pers_no}' and company_id='{cur_company_id}'");
}

constexpr changed_record the_workplace{"select * from company where company_id='{cur_company_id}'",
                                       [] { return changed_fields(workplace_columns({}, {}, {})); }};

} // namespace

const save_act workplace_added{"workplace added", "근무처 입력", store_new};
const save_act workplace_changed{"workplace changed", "근무처 수정", store_changed, &the_workplace};
const save_act workplace_deleted{"workplace deleted", "근무처 삭제", store_deleted};

planned_save add_workplace(const QString& pers_no, const workplace_data& workplace, const QString& today,
                           const QString& known_ids)
{
    return {&workplace_added,
            pers_no,
            slot_values(workplace_columns(pers_no, workplace, today)),
            {{"company_id", known_ids}}};
}

planned_save change_workplace(const QString& pers_no, const QString& company_id,
                              const std::vector<column_value>& columns, const values& before)
{
    values given = slot_values(columns);
    given.add({"cur_company_id", company_id});
    return {&workplace_changed, pers_no, given, before};
}

bool is_workplace_stored(const save& of)
{
    return of.has_stored(the_row);
}

planned_save delete_workplace(const QString& pers_no, const QString& company_id)
{
    return {&workplace_deleted, pers_no, {{"selected_pers_no", pers_no}, {"cur_company_id", company_id}}};
}

} // namespace orvo
