#include "members/rules/member_update.h"

#include "base/resident_number.h"
#include "client/branches.h"
#include "db/schema/schema.h"

#include <algorithm>

namespace orvo {

namespace {

/// Years and months, or the one that is chosen; unlike a new member's, "0" for none.
QString career_of(const member_data& typed)
{
    return or_zero(typed.career_years + typed.career_months);
}

const QString& value_of(const std::vector<column_value>& columns, std::string_view column)
{
    return std::ranges::find(columns, column, &column_value::column)->value;
}

/// A code counts within the one above it: under another it means something else.
struct code_above {
    std::string_view column;
    std::string_view above;
};
constexpr code_above codes_above[] = {{"code_sect", "code_bran"},
                                      {"code_sect", "code_big"},
                                      {"code_great", "code_part"},
                                      {"code_small", "code_part"},
                                      {"code_small", "code_great"}};

struct table_of_member {
    const char* name;
    const char* what;
};

/// In the order in which a deletion goes through them.
constexpr std::array tables_of_a_member{
    table_of_member{"person_m_tbl", "회원"},    table_of_member{"company", "근무처"},
    table_of_member{"dues_h_tbl", "회비 년도"}, table_of_member{"dues_b_tbl", "회비 입금"},
    table_of_member{"std_h_tbl", "평점 기간"},  table_of_member{"std_b_tbl", "교육 이수"},
    table_of_member{"supplement", "위생교육"},  table_of_member{"have_lic_tbl", "자격증"},
    table_of_member{"id_tbl", "웹 아이디"}};

} // namespace

std::optional<refusal> check_edited_member(const member_data& typed, bool keeps_telephone)
{
    if (auto why = check_identity(typed, &console::check_pers_no))
        return why;
    if (typed.code_bran.isEmpty())
        return refusal{QStringLiteral("소속지부를 선택하세요"), QStringLiteral("bran_cbb")};
    if (typed.code_big.isEmpty())
        return refusal{QStringLiteral("소속분과를 선택하세요"), QStringLiteral("big_cbb")};
    return keeps_telephone ? std::nullopt : check_home_telephone(typed);
}

std::vector<column_value> edited_columns(const member_data& typed, const QString& today)
{
    return {{"pers_no", typed.pers_no()},
            {"lic_no", typed.lic_no},
            {"pers_name", typed.pers_name},
            {"pers_sex", flag(typed.is_male)},
            {"code_religion", typed.code_religion},
            {"pers_marry", typed.pers_marry},
            {"code_post", typed.code_post},
            {"pers_add", typed.pers_add},
            {"pers_tel", joined(typed.pers_tel)},
            {"pers_hp", joined(typed.pers_hp)},
            {"email", typed.email},
            {"code_bran", typed.code_bran},
            {"code_big", typed.code_big},
            {"code_sect", typed.code_sect},
            {"code_scholar", typed.code_scholar},
            {"code_univer", typed.code_univer},
            {"code_school", typed.code_school},
            {"pers_career", career_of(typed)},
            {"pers_call", typed.pers_call},
            {"get_mail_place", typed.get_mail_place},
            {"pers_year_pay", or_zero(typed.pers_year_pay), true},
            {"regi_date", today},
            {"lic_kind1", flag(typed.lic_kind[0])},
            {"lic_kind2", flag(typed.lic_kind[1])},
            {"lic_kind3", flag(typed.lic_kind[2])},
            {"lic_kind4", flag(typed.lic_kind[3])},
            {"lic_kind5", flag(typed.lic_kind[4])},
            {"lic_kind6", flag(typed.lic_kind[5])},
            {"lic_kind6_no", typed.lic_kind6_no},
            {"lic_kind7", flag(typed.lic_kind[6])},
            {"lic_kind7_no", typed.lic_kind7_no},
            {"lic_pay", or_zero(typed.lic_pay), true},
            {"code_deposit", typed.code_deposit},
            {"sub_code", typed.sub_code}};
}

std::vector<column_value> keep_what_cannot_be_shown(const std::vector<column_value>& typed,
                                                    const std::vector<column_value>& untouched,
                                                    const rows::row& stored)
{
    const auto is_untouched = [&](std::string_view column) {
        return value_of(typed, column) == value_of(untouched, column);
    };
    std::vector<column_value> kept = typed;
    for (column_value& each : kept) {
        const QString was = stored.text(each.column);
        const bool is_nothing = was.isEmpty() && (each.value.isEmpty() || each.value == QLatin1String("0"));
        const bool may_keep =
            is_untouched(each.column) && std::ranges::all_of(codes_above, [&](const code_above& of) {
                return of.column != each.column || is_untouched(of.above);
            });
        if (each.column != "regi_date" && may_keep && !is_nothing)
            each.value = was;
    }
    return kept;
}

bool leaves_what_is_seen(const std::vector<column_value>& typed, const rows::row& stored,
                         const QString& session_branch)
{
    const qint64 to = value_of(typed, "code_bran").toLongLong();
    return to != stored.number("code_bran") && !sees_members_of(session_branch, to);
}

bool keeps_telephone(const member_data& typed, const std::vector<column_value>& untouched,
                     const rows::row& stored)
{
    const QString number = stored.text("pers_tel");
    const QString shown = joined(typed.pers_tel);
    return !number.isEmpty() && shown != number && shown == value_of(untouched, "pers_tel");
}

question<std::optional<rows>> row_on_server(const QString& pers_no)
{
    return {{"select * from person_m_tbl where pers_no='{pers_no}'", {{"pers_no", pers_no}}},
            [](const rows& found) { return found.empty() ? std::optional<rows>{} : found; }};
}

std::vector<newer_value> newer_values(const rows::row& on_server, const rows::row& seen,
                                      const std::vector<column_value>& written)
{
    std::vector<newer_value> newer;
    for (const column_value& each : written) {
        const QString now = on_server.text(each.column);
        const QString before = seen.text(each.column);
        // The copy holds a number where a register that exists has nothing.
        const bool is_same = is_number(each.column)
                                 ? on_server.number(each.column) == seen.number(each.column)
                                 : now == before;
        if (each.column != "regi_date" && !is_same)
            newer.push_back(
                {QString::fromLatin1(each.column.data(), static_cast<qsizetype>(each.column.size())), now,
                 before});
    }
    return newer;
}

namespace {

constexpr save_step the_member{"member", "회원 정보"};

void store_changed(save& of)
{
    static const std::string text =
        update_text("person_m_tbl", edited_columns({}, {})) + " where pers_no='{selected_pers_no}'";
    of.write(the_member, text);
    of.write_here({"copy", "이 PC의 검색 결과"}, text);
    // A web password is nowhere noted: one that is finished later leaves it as it is.
    of.write({"web login", "웹 아이디"},
             of.has("passwd")
                 ? "update id_tbl set id='{id}' ,passwd='{passwd}' where pers_no='{selected_pers_no}'"
                 : "update id_tbl set id='{id}' where pers_no='{selected_pers_no}'");
    of.write({"years", "회비 년도"},
             "update dues_h_tbl set pers_no='{pers_no}' where pers_no='{selected_pers_no}'");
    of.write({"payments", "회비 입금"},
             "update dues_b_tbl set pers_no='{pers_no}' where pers_no='{selected_pers_no}'");
    of.write({"pledge", "약정"},
             "update contract set pers_no='{pers_no}' where pers_no='{selected_pers_no}'");
    of.write({"instalments", "약정 입금"},
             "update contract_list set pers_no='{pers_no}' where pers_no='{selected_pers_no}'");
    of.write({"workplaces", "근무처"},
             "update company set pers_no='{pers_no}' where pers_no='{selected_pers_no}'");
    of.write({"hygiene", "위생교육 명단의 지부"},
             "update supplement set code_bran='{code_bran}' where pers_no='{selected_pers_no}'");
}

QString old_number_is_taken(save& of)
{
    const QString old = of.given("selected_pers_no");
    if (!of.has_stored(the_member) || old == of.given("pers_no") || !ask(of.db(), row_on_server(old)))
        return {};
    return QStringLiteral("그 사이에 예전 번호로 다른 회원이 등록되었습니다.");
}

constexpr changed_record the_row{"select * from person_m_tbl where pers_no='{selected_pers_no}'",
                                 [] { return changed_fields(edited_columns({}, {})); }};

void store_deleted(save& of)
{
    for (const table_of_member& each : tables_of_a_member)
        of.write({each.name, each.what},
                 "delete " + std::string{each.name} + " where pers_no='{selected_pers_no}'");
}

QString is_somebody_else(save& of)
{
    const auto there = ask(of.db(), row_on_server(of.given("selected_pers_no")));
    if (!there)
        return {};
    const bool is_new = !of.stored_steps().isEmpty() ||
                        there->front().text("pers_name").toStdString() != of.plan().before.of("pers_name");
    return is_new ? QStringLiteral("그 사이에 같은 번호의 회원이 다시 등록되었습니다.") : QString{};
}

} // namespace

const save_act member_changed{"member changed", "회원 수정", store_changed, &the_row, old_number_is_taken};
const save_act member_deleted{"member deleted", "회원 삭제", store_deleted, nullptr, is_somebody_else};

planned_save change_member(const QString& selected_pers_no, const std::vector<column_value>& columns,
                           const QString& id, const QString& passwd, const values& before)
{
    values given = slot_values(columns);
    given.add(values{{"selected_pers_no", selected_pers_no}, {"id", id}, {"passwd", passwd}});
    return {&member_changed, selected_pers_no, given, before};
}

std::vector<rows_to_go> what_a_deletion_takes(connection& db, const QString& pers_no)
{
    std::vector<rows_to_go> taken;
    for (const table_of_member& each : tables_of_a_member)
        taken.push_back(
            {QString::fromUtf8(each.what),
             db.number("select count(*) as n from " + std::string{each.name} + " where pers_no='{pers_no}'",
                       {{"pers_no", pers_no}})});
    return taken;
}

planned_save delete_member(const QString& pers_no, const QString& pers_name)
{
    return {&member_deleted, pers_no, {{"selected_pers_no", pers_no}}, {{"pers_name", pers_name}}};
}

} // namespace orvo
