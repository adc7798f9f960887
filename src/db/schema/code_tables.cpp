#include "db/schema/tables.h"

namespace orvo {

using namespace columns;

namespace {

table codes_of(std::string_view name, std::string_view code, std::string_view label)
{
    return {name, {number(code), text(label, 60)}, {code}, {}};
}

} // namespace

std::vector<table> code_tables()
{
    return {
        codes_of("branch_code", "code_bran", "branch_name"),
        codes_of("big_division", "code_big", "big_name"),
        {"section_code",
         {number("code_bran"), number("code_big"), number("code_sect"), text("section_name", 60)},
         {"code_bran", "code_big", "code_sect"},
         {}},
        {"great_division",
         {number("code_part"), number("code_great"), text("great_name", 60)},
         {"code_part", "code_great"},
         {}},
        {"small_division",
         {number("code_part"), number("code_great"), number("code_small"), text("small_name", 60)},
         {"code_part", "code_great", "code_small"},
         {}},
        codes_of("private_tbl", "code_private", "private_name"),
        {"deposit",
         {number("code_deposit"), text("deposit_name", 60), text("deposit_add", 200),
          text("deposit_tel", 20)},
         {"code_deposit"},
         {}},
        codes_of("instrument", "code_inst", "instrument"),
        codes_of("job_level", "job_level_code", "job_level_name"),
        codes_of("job_line", "job_line_code", "job_line_name"),
        codes_of("make_use_of", "code_use", "use_name"),
        codes_of("receipt_place", "code_receipt", "receipt_name"),
        codes_of("religion", "code_religion", "religion_name"),
        codes_of("scholarship", "code_scholar", "scholar_name"),
        codes_of("school", "code_school", "school_name"),
        codes_of("class_tbl", "code_class", "class_name"),
        codes_of("sub_element", "sub_code", "sub_element_name"),
        codes_of("univer_degree", "code_univer", "univer_name"),
        {"money_member",
         {number("code_member"), text("mem_kind", 40), money("mem_dues"), money("center_money"),
          money("bran_money")},
         {"code_member"},
         {}},
    };
}

} // namespace orvo
