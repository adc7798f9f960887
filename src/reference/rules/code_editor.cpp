#include "reference/rules/code_editor.h"

#include "db/schema/schema.h"

#include <limits>

namespace orvo {

namespace {

std::string joined(std::initializer_list<std::string_view> pieces)
{
    std::string text;
    for (const std::string_view each : pieces)
        text += each;
    return text;
}

std::string highest_text(const code_editor& of)
{
    return of.highest.empty() ? joined({"select max(", of.key, ") as m_code from ", of.table, " "})
                              : std::string{of.highest};
}

std::string insert_text(const code_editor& of)
{
    return of.insert.empty() ? joined({"insert into ", of.table, " (", of.key, ",", of.name,
                                       ") values ({code},'{str_txt}')"})
                             : std::string{of.insert};
}

std::string all_text(const code_editor& of)
{
    return of.all.empty() ? joined({"select * from ", of.table, " order by ", of.key, " asc"})
                          : std::string{of.all};
}

std::string search_text(const code_editor& of)
{
    return joined({"select * from ", of.table, " where ", of.name, " like '%{str_txt}%'"});
}

/// The first text that its column does not hold; as many as there are where all fit. Counted in UTF-16 units,
/// of which no engine finds more characters.
std::size_t too_long(const code_editor& of, const std::vector<column_text>& texts)
{
    std::size_t at = 0;
    while (at < texts.size() && texts[at].text.size() <= width_of(of.table, texts[at].column))
        ++at;
    return at;
}

constexpr qint64 greatest_code = std::numeric_limits<std::int32_t>::max();

} // namespace

const std::vector<code_editor>& code_editors()
{
    static const std::vector<code_editor> all{
        {"bran_dlg", "소속지부", "branch_code", "code_bran", "branch_name", 10},
        {"big_dlg", "소속분과", "big_division", "code_big", "big_name", 10, hand_back::hits, "search_img",
         true, "select max(code_big) as m_code from big_division"},
        {"deposit_dlg", "위탁업체", "deposit", "code_deposit", "deposit_name", 1, hand_back::hits,
         "search_img", false, "",
         "insert into deposit (code_deposit,deposit_name,deposit_add,deposit_tel) values "
         "({code},'{str_txt}','{add_txt}','{tel}')"},
        {"religion_dlg", "종교", "religion", "code_religion", "religion_name", 10},
        {"school_dlg", "학교", "school", "code_school", "school_name", 10},
        {"sub_dlg", "산하단체/분야회 소속현황", "sub_element", "sub_code", "sub_element_name", 10},
        {"scholar_dlg", "학력", "scholarship", "code_scholar", "scholar_name", 10},
        {"univer_dlg", "학위", "univer_degree", "code_univer", "univer_name", 10},
        {"job_level_dlg", "직급", "job_level", "job_level_code", "job_level_name", 10},
        {"job_line_dlg", "직렬", "job_line", "job_line_code", "job_line_name", 10},
        {"receipt_dlg", "회비입금장소", "receipt_place", "code_receipt", "receipt_name", 1},
        {"use_dlg", "근무처운영형태", "make_use_of", "code_use", "use_name", 1},
        {"private_dlg", "사유 코드", "private_tbl", "code_private", "private_name", 1},
        {"inst_dlg", "교육 기관", "instrument", "code_inst", "instrument", 1},
        {"class_dlg", "교육 분류", "class_tbl", "code_class", "class_name", 1},
        {"great_dlg", "대분류", "great_division", "code_great", "great_name", 10, hand_back::clicked_row,
         "Image2", false, "select max(code_great) as m_code from great_division where code_part={code_part}",
         "insert into great_division (code_part,code_great,great_name) values "
         "({code_part},{code},'{str_txt}')"},
        {"small_dlg", "소분류", "small_division", "code_small", "small_name", 1, hand_back::nothing, "Image2",
         false,
         "select max(code_small) as m_code from small_division where code_part={code_part} and "
         "code_great={code_great}",
         "insert into small_division (code_part,code_great,code_small,small_name) values "
         "({code_part},{code_great},{code},'{str_txt}')"},
        // The blank that is missing before `and` is missing in the register's own text too.
        {"section_dlg", "소속분회", "section_code", "code_sect", "section_name", 1, hand_back::nothing,
         "search_img", false,
         "select max(code_sect) as m_code from section_code where code_bran={code_bran} and "
         "code_big={code_big}",
         "insert into section_code (code_bran,code_big,code_sect,section_name) values "
         "({code_bran},{code_big},{code},'{str_txt}')",
         "select * from section_code where code_bran={code_bran}and code_big={code_big}"},
    };
    return all;
}

rows find_codes(connection& local, const code_editor& of, const QString& word)
{
    return local.read(search_text(of), {{"str_txt", word}});
}

rows all_codes(connection& local, const code_editor& of, const values& parents)
{
    return local.read(all_text(of), parents);
}

addition add_code(connection& local, connection& server, const code_editor& of,
                  const std::vector<column_text>& texts, const values& parents)
{
    addition made;
    made.refused_text = too_long(of, texts);
    if (made.refused_text < texts.size()) {
        const std::string_view column = texts[made.refused_text].column;
        made.refusal = QStringLiteral("%1자까지 입력할 수 있습니다.").arg(width_of(of.table, column));
        return made;
    }
    const qint64 highest = local.number(highest_text(of), parents); // of an empty table 0
    if (highest > greatest_code - of.step) {
        made.refused_text = 0;
        made.refusal = QStringLiteral(
            "코드가 가장 큰 값에 이르러 더 추가할 수 없습니다. 관리자에게 문의하시기 바랍니다.");
        return made;
    }
    made.code = highest + of.step;
    values row = parents;
    row.add({"code", made.code});
    for (const column_text& each : texts)
        row.add({each.slot, each.text});
    const std::string insert = insert_text(of);
    const auto store_here = [&] {
        local.write(insert, row);
        made.is_here = true;
    };
    const auto store_on_server = [&] {
        server.write(insert, row);
        made.is_on_server = true;
    };
    try {
        if (of.server_first)
            store_on_server();
        store_here();
        if (!of.server_first)
            store_on_server();
    } catch (const db_failure& failure) {
        // Before anything is stored the same press may go well the next time, but not where the mirror is
        // behind the server: the code would be the same one again.
        if (!made.is_here && !made.is_on_server && failure.kind() != failure_kind::duplicate)
            throw;
        made.failure = failure;
    }
    return made;
}

rows read_branches(connection& local)
{
    return local.read("select * from branch_code");
}

rows read_big_divisions(connection& local)
{
    return local.read("select * from big_division");
}

} // namespace orvo
