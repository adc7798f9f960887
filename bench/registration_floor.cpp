#include "registration_floor.h"

#include <libpq-fe.h>
#include <sqlite3.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <iterator>

namespace {

enum { most_fields = 40 };

/// A value as both engines take it; `pers_no` stands for the number of the member.
struct field {
    const char* text;
    bool is_number = false;
};

constexpr field pers_no{nullptr};

constexpr field number(const char* digits)
{
    return {digits, true};
}

struct step {
    const char* name;
    const char* sql; ///< each parameter first met in the order of the fields: so both engines number alike
    int count;
    field fields[most_fields];
};

constexpr step steps[] = {
    {"look", "select * from person_m_tbl where pers_no=$1", 1, {pers_no}},
    {"member",
     "insert into person_m_tbl(pers_no,lic_no,pers_name,pers_sex,code_religion,pers_marry,code_post,pers_add,"
     "pers_tel,pers_hp,email,code_bran,code_big,code_sect,code_scholar,code_univer,code_school,pers_career,"
     "pers_call,get_mail_place,pers_year_pay,code_member,regi_date,lic_kind1,lic_kind2,lic_kind3,lic_kind4,"
     "lic_kind5,lic_kind6,lic_kind6_no,lic_kind7,lic_kind7_no,lic_pay,code_deposit,sub_code) values ("
     "$1,$2,$3,$4,$5,$6,$7,$8,$9,$10,$11,$12,$13,$14,$15,$16,$17,$18,$19,$20,$21,$22,$23,$24,$25,$26,$27,"
     "$28,$29,$30,$31,$32,$33,$34,$35)",
     35,
     {pers_no,
      {"12345"},
      {"홍길순"},
      {"0"},
      number("2"),
      {"미혼"},
      {"135080"},
      {"서울 강남구 역삼동 12-3"},
      {"0221234567"},
      {"01012345678"},
      {"hong@example.org"},
      number("1"),
      number("2"),
      number("3"),
      number("1"),
      number("1"),
      number("7"),
      {"0506"},
      {"영양사님"},
      {"자택"},
      number("2400"),
      number("1"),
      {"20260102"},
      {"1"},
      {"0"},
      {"0"},
      {"1"},
      {"0"},
      {"1"},
      {"제6-77호"},
      {"0"},
      {""},
      number("50000"),
      number("4"),
      number("5")}},
    {"dues",
     "insert into dues_h_tbl(pers_no,code_member,val_year,mem_dues,yet_money,incom_flag,regi_date) values "
     "($1,$2,$3,$4,$5,$6,$7)",
     7,
     {pers_no, number("1"), {"2026"}, number("30000"), number("30000"), {"0"}, {"20260102"}}},
    {"payment",
     "insert into dues_b_tbl(pers_no,code_member,val_year,pers_mem_day,pers_mem_b_day,pres_money,"
     "code_receipt,pres_let_day) values ($1,$2,$3,$4,$5,$6,$7,$8)",
     8,
     {pers_no,
      number("1"),
      {"2026"},
      {"20260102"},
      {"20260102"},
      number("20000"),
      number("3"),
      {"20260102"}}},
    {"outstanding",
     "update dues_h_tbl set yet_money=yet_money-$1,incom_flag='0' where pers_no=$2 and code_member=$3",
     3,
     {number("20000"), pers_no, number("1")}},
    {"pledge",
     "insert into contract(con_day,pers_no,con_amount,con_money,con_check,con_finish) values "
     "($1,$2,$3,$4,$5,$6)",
     6,
     {{"20260102"}, pers_no, number("500000"), number("0"), {"0"}, {"0"}}},
    {"workplace",
     "insert into company(pers_no,company_name,code_part,code_great,code_small,pers_in_date,job_dept,"
     "job_line_code,job_level_code,code_use,code_post,company_add,company_tel,company_fax,company_morning,"
     "company_midday,company_evening,company_between,company_diet,company_cook,company_food,company_meal,"
     "company_sick_bad,pers_multy,join_con,join_cook,comp_except,regi_date,pers_out_date,primary_flag) "
     "values "
     "($1,$2,$3,$4,$5,$6,$7,$8,$9,$10,$11,$12,$13,$14,$15,$16,$17,$18,$19,$20,$21,$22,$23,$24,$25,$26,$27,"
     "$28,$29,$30)",
     30,
     {pers_no,        {"한빛병원"},   number("100"), number("1"),   number("2"),   {"202503"},
      {"영양과"},     number("1"),    number("2"),   number("1"),   {"135081"},    {"서울 강남구 역삼동 45"},
      {"0225556666"}, {"0225556667"}, number("100"), number("300"), number("200"), number("0"),
      number("2"),    number("3"),    number("8"),   {"3500"},      {"120"},       number("0"),
      {"2"},          {"0"},          number("1"),   {"20260102"},  {""},          number("1")}}};

constexpr const char* written_tables[] = {"person_m_tbl", "dues_h_tbl", "dues_b_tbl", "contract", "company"};

[[noreturn]] void give_up(const char* what, const char* why)
{
    std::fprintf(stderr, "registration floor: %s: %s\n", what, why);
    std::exit(1);
}

/// The connection text, or nothing where the server is a file.
const char* connection_text(const char* server)
{
    constexpr const char mark[] = "postgresql:";
    return std::strncmp(server, mark, sizeof mark - 1) == 0 ? server + sizeof mark - 1 : nullptr;
}

void check(sqlite3* file, int result, const char* what)
{
    if (result != SQLITE_OK && result != SQLITE_DONE && result != SQLITE_ROW)
        give_up(what, sqlite3_errmsg(file));
}

sqlite3* open_file(const char* path)
{
    sqlite3* file = nullptr;
    check(file, sqlite3_open_v2(path, &file, SQLITE_OPEN_READWRITE, nullptr), path);
    check(file, sqlite3_exec(file, "pragma synchronous=full", nullptr, nullptr, nullptr), "synchronous");
    check(file, sqlite3_exec(file, "pragma journal_mode=wal", nullptr, nullptr, nullptr), "journal");
    return file;
}

PGconn* open_line(const char* text)
{
    PGconn* line = PQconnectdb(text);
    if (PQstatus(line) != CONNECTION_OK)
        give_up(text, PQerrorMessage(line));
    return line;
}

void run_on_file(sqlite3* file, sqlite3_stmt* statement, const step& what, const char* number_of_member)
{
    for (int i = 0; i < what.count; ++i) {
        const field& each = what.fields[i];
        if (each.is_number)
            sqlite3_bind_int64(statement, i + 1, std::strtoll(each.text, nullptr, 10));
        else
            sqlite3_bind_text(statement, i + 1, each.text ? each.text : number_of_member, -1, SQLITE_STATIC);
    }
    const int result = sqlite3_step(statement);
    check(file, result, what.name);
    if (result == SQLITE_ROW)
        give_up(what.name, "the number is taken");
    sqlite3_reset(statement);
}

void run_on_line(PGconn* line, const step& what, const char* number_of_member)
{
    const char* given[most_fields];
    for (int i = 0; i < what.count; ++i)
        given[i] = what.fields[i].text ? what.fields[i].text : number_of_member;
    PGresult* result = PQexecPrepared(line, what.name, what.count, given, nullptr, nullptr, 0);
    const ExecStatusType status = PQresultStatus(result);
    if (status != PGRES_COMMAND_OK && status != PGRES_TUPLES_OK)
        give_up(what.name, PQresultErrorMessage(result));
    if (PQntuples(result) > 0)
        give_up(what.name, "the number is taken");
    PQclear(result);
}

std::string query_of(const char* table)
{
    return std::string{"select * from "} + table + " where substr(pers_no,7,1)='9' order by pers_no";
}

void append_from_file(sqlite3* file, const char* table, std::vector<std::string>& lines)
{
    sqlite3_stmt* rows = nullptr;
    check(file, sqlite3_prepare_v2(file, query_of(table).c_str(), -1, &rows, nullptr), table);
    int result;
    while ((result = sqlite3_step(rows)) == SQLITE_ROW) {
        std::string& line = lines.emplace_back(table);
        for (int i = 0; i < sqlite3_column_count(rows); ++i) {
            line += '|' + std::to_string(sqlite3_column_type(rows, i)) + ':';
            line += reinterpret_cast<const char*>(sqlite3_column_text(rows, i));
        }
    }
    check(file, result, table);
    sqlite3_finalize(rows);
}

void append_from_line(PGconn* line, const char* table, std::vector<std::string>& lines)
{
    PGresult* rows = PQexec(line, query_of(table).c_str());
    if (PQresultStatus(rows) != PGRES_TUPLES_OK)
        give_up(table, PQresultErrorMessage(rows));
    for (int row = 0; row < PQntuples(rows); ++row) {
        std::string& text = lines.emplace_back(table);
        for (int i = 0; i < PQnfields(rows); ++i)
            text += '|' + std::to_string(PQgetisnull(rows, row, i)) + ':' + PQgetvalue(rows, row, i);
    }
    PQclear(rows);
}

} // namespace

struct registration_floor {
    sqlite3* file = nullptr;
    sqlite3_stmt* statements[std::size(steps)] = {};
    PGconn* line = nullptr;
};

registration_floor* open_registration_floor(const char* server)
{
    auto* floor = new registration_floor;
    if (const char* text = connection_text(server))
        floor->line = open_line(text);
    else
        floor->file = open_file(server);
    for (std::size_t i = 0; i < std::size(steps); ++i) {
        if (floor->file) {
            check(floor->file,
                  sqlite3_prepare_v3(floor->file, steps[i].sql, -1, SQLITE_PREPARE_PERSISTENT,
                                     &floor->statements[i], nullptr),
                  steps[i].name);
            continue;
        }
        PGresult* result = PQprepare(floor->line, steps[i].name, steps[i].sql, 0, nullptr);
        if (PQresultStatus(result) != PGRES_COMMAND_OK)
            give_up(steps[i].name, PQresultErrorMessage(result));
        PQclear(result);
    }
    return floor;
}

void close_registration_floor(registration_floor* floor)
{
    for (sqlite3_stmt* each : floor->statements)
        sqlite3_finalize(each);
    sqlite3_close(floor->file);
    PQfinish(floor->line);
    delete floor;
}

void register_on_floor(registration_floor* floor, const char* number_of_member)
{
    for (std::size_t i = 0; i < std::size(steps); ++i)
        floor->file ? run_on_file(floor->file, floor->statements[i], steps[i], number_of_member)
                    : run_on_line(floor->line, steps[i], number_of_member);
}

std::vector<std::string> stored_registrations(const char* server)
{
    std::vector<std::string> lines;
    if (const char* text = connection_text(server)) {
        PGconn* line = open_line(text);
        for (const char* table : written_tables)
            append_from_line(line, table, lines);
        PQfinish(line);
        return lines;
    }
    sqlite3* file = open_file(server);
    for (const char* table : written_tables)
        append_from_file(file, table, lines);
    sqlite3_close(file);
    return lines;
}
