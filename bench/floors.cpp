#include "floors.h"

#include <libpq-fe.h>
#include <sqlite3.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>

#define COPIED_COLUMNS                                                                                       \
    "pers_no,lic_no,pers_name,pers_sex,code_religion,pers_marry,code_post,pers_add,pers_tel,pers_hp,email,"  \
    "code_bran,code_big,code_sect,code_scholar,code_univer,code_school,pers_career,pers_call,"               \
    "get_mail_place,pers_year_pay,code_member,re_edu_flag,regi_date,bran_calc_flag,lic_kind1,lic_kind2,"     \
    "lic_kind3,lic_kind4,lic_kind5,lic_kind6,lic_kind6_no,lic_kind7,lic_kind7_no,lic_pay,code_deposit,"      \
    "sub_code"

enum { copied_columns = 37, page_size = 15 };

static const char* const insert_text =
    "insert into person_m_tbl(" COPIED_COLUMNS
    ") values (?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?)";

// The places of the copied columns in "select *", which brings all of a member's columns, and whether they
// are numbers where they are stored.
struct search_floor {
    sqlite3* local;
    sqlite3_stmt* insert;
    sqlite3_stmt* first_page;
    sqlite3* file;
    sqlite3_stmt* query;
    PGconn* line;
    int source[copied_columns];
    bool is_number[copied_columns];
};

static void give_up(const char* what, const char* why)
{
    fprintf(stderr, "floor: %s: %s\n", what, why);
    exit(1);
}

static void check(sqlite3* base, int result, const char* what)
{
    if (result != SQLITE_OK && result != SQLITE_DONE && result != SQLITE_ROW)
        give_up(what, sqlite3_errmsg(base));
}

static void run_text(sqlite3* base, const char* text)
{
    check(base, sqlite3_exec(base, text, 0, 0, 0), text);
}

static sqlite3_stmt* prepare(sqlite3* base, const char* text)
{
    sqlite3_stmt* statement = 0;
    check(base, sqlite3_prepare_v3(base, text, -1, SQLITE_PREPARE_PERSISTENT, &statement, 0), text);
    return statement;
}

static sqlite3* open_file(const char* path, const char* synchronous)
{
    sqlite3* base = 0;
    const int result = sqlite3_open_v2(path, &base, SQLITE_OPEN_READWRITE, 0);
    check(base, result, path);
    run_text(base, synchronous);
    run_text(base, "pragma journal_mode=wal");
    return base;
}

static int column_number(char* name, const char* const* names, int count)
{
    for (int i = 0; i < count; ++i)
        if (strcmp(names[i], name) == 0)
            return i;
    give_up("the query brings no column", name);
    return -1;
}

static void find_columns(search_floor* floor, const char* const* names, int count)
{
    char wanted[] = COPIED_COLUMNS;
    char* name = strtok(wanted, ",");
    for (int i = 0; i < copied_columns; ++i, name = strtok(0, ","))
        floor->source[i] = column_number(name, names, count);
}

static search_floor* open_local(const char* local_file)
{
    search_floor* floor = static_cast<search_floor*>(calloc(1, sizeof *floor));
    floor->local = open_file(local_file, "pragma synchronous=off");
    floor->insert = prepare(floor->local, insert_text);
    floor->first_page = prepare(floor->local, "select pers_no,pers_name from person_m_tbl limit ?");
    return floor;
}

search_floor* open_floor_on_file(const char* register_file, const char* local_file)
{
    search_floor* floor = open_local(local_file);
    floor->file = open_file(register_file, "pragma synchronous=full");
    floor->query = prepare(floor->file,
                           "select * from person_m_tbl where pers_name like ? order by person_m_tbl.pers_no");
    const char* names[64];
    const int count = sqlite3_column_count(floor->query);
    for (int i = 0; i < count; ++i)
        names[i] = sqlite3_column_name(floor->query, i);
    find_columns(floor, names, count);
    return floor;
}

search_floor* open_floor_on_postgresql(const char* connection_text, const char* local_file)
{
    search_floor* floor = open_local(local_file);
    floor->line = PQconnectdb(connection_text);
    if (PQstatus(floor->line) != CONNECTION_OK)
        give_up(connection_text, PQerrorMessage(floor->line));
    const Oid text_type = 25;
    PQclear(PQprepare(
        floor->line, "query",
        "select * from person_m_tbl where pers_name like $1 escape '' order by person_m_tbl.pers_no", 1,
        &text_type));
    PGresult* described = PQdescribePrepared(floor->line, "query");
    if (PQresultStatus(described) != PGRES_COMMAND_OK)
        give_up("describe", PQerrorMessage(floor->line));
    const char* names[64];
    for (int i = 0; i < PQnfields(described); ++i)
        names[i] = PQfname(described, i);
    find_columns(floor, names, PQnfields(described));
    const Oid int2 = 21, int4 = 23, int8 = 20;
    for (int i = 0; i < copied_columns; ++i) {
        const Oid type = PQftype(described, floor->source[i]);
        floor->is_number[i] = type == int2 || type == int4 || type == int8;
    }
    PQclear(described);
    return floor;
}

void close_floor(search_floor* floor)
{
    sqlite3_finalize(floor->insert);
    sqlite3_finalize(floor->first_page);
    sqlite3_finalize(floor->query);
    sqlite3_close(floor->local);
    sqlite3_close(floor->file);
    PQfinish(floor->line);
    free(floor);
}

static void insert_row(search_floor* floor)
{
    check(floor->local, sqlite3_step(floor->insert), "insert");
    sqlite3_reset(floor->insert);
}

static long copy_from_file(search_floor* floor, const char* pattern)
{
    sqlite3_stmt* query = floor->query;
    sqlite3_stmt* insert = floor->insert;
    long rows = 0;
    sqlite3_bind_text(query, 1, pattern, -1, SQLITE_STATIC);
    int result;
    while ((result = sqlite3_step(query)) == SQLITE_ROW) {
        for (int i = 0; i < copied_columns; ++i) {
            const int from = floor->source[i];
            if (sqlite3_column_type(query, from) == SQLITE_INTEGER)
                sqlite3_bind_int64(insert, i + 1, sqlite3_column_int64(query, from));
            else
                sqlite3_bind_text(insert, i + 1,
                                  reinterpret_cast<const char*>(sqlite3_column_text(query, from)),
                                  sqlite3_column_bytes(query, from), SQLITE_STATIC);
        }
        insert_row(floor);
        ++rows;
    }
    check(floor->file, result, "query");
    sqlite3_reset(query);
    return rows;
}

static long copy_from_postgresql(search_floor* floor, const char* pattern)
{
    long rows = 0;
    if (!PQsendQueryPrepared(floor->line, "query", 1, &pattern, 0, 0, 0) || !PQsetSingleRowMode(floor->line))
        give_up("query", PQerrorMessage(floor->line));
    PGresult* result;
    while ((result = PQgetResult(floor->line))) {
        const ExecStatusType status = PQresultStatus(result);
        if (status == PGRES_SINGLE_TUPLE) {
            for (int i = 0; i < copied_columns; ++i) {
                const char* value = PQgetvalue(result, 0, floor->source[i]);
                if (floor->is_number[i])
                    sqlite3_bind_int64(floor->insert, i + 1, strtoll(value, 0, 10));
                else
                    sqlite3_bind_text(floor->insert, i + 1, value, PQgetlength(result, 0, floor->source[i]),
                                      SQLITE_STATIC);
            }
            insert_row(floor);
            ++rows;
        } else if (status != PGRES_TUPLES_OK) {
            give_up("query", PQresultErrorMessage(result));
        }
        PQclear(result);
    }
    return rows;
}

static void read_first_page(search_floor* floor)
{
    int result;
    sqlite3_bind_int(floor->first_page, 1, page_size);
    while ((result = sqlite3_step(floor->first_page)) == SQLITE_ROW)
        if (!sqlite3_column_text(floor->first_page, 0) || !sqlite3_column_text(floor->first_page, 1))
            give_up("first page", "an empty field");
    check(floor->local, result, "first page");
    sqlite3_reset(floor->first_page);
}

long run_floor(search_floor* floor, const char* name_pattern)
{
    run_text(floor->local, "begin");
    run_text(floor->local, "delete from person_m_tbl");
    const long rows =
        floor->line ? copy_from_postgresql(floor, name_pattern) : copy_from_file(floor, name_pattern);
    run_text(floor->local, "commit");
    read_first_page(floor);
    return rows;
}

static bool is_same_field(sqlite3_stmt* one, sqlite3_stmt* other, int at)
{
    if (sqlite3_column_type(one, at) != sqlite3_column_type(other, at))
        return false;
    const int size = sqlite3_column_bytes(one, at);
    return size == sqlite3_column_bytes(other, at) &&
           memcmp(sqlite3_column_blob(one, at), sqlite3_column_blob(other, at), static_cast<size_t>(size)) ==
               0;
}

bool are_same_copies(const char* one_file, const char* other_file)
{
    const char* const files[2] = {one_file, other_file};
    sqlite3* bases[2];
    sqlite3_stmt* rows[2];
    for (int i = 0; i < 2; ++i) {
        const int result = sqlite3_open_v2(files[i], &bases[i], SQLITE_OPEN_READWRITE, 0);
        check(bases[i], result, files[i]);
        rows[i] = prepare(bases[i], "select * from person_m_tbl order by rowid");
    }
    bool same = true;
    for (long row = 1; same; ++row) {
        const int one = sqlite3_step(rows[0]);
        const int other = sqlite3_step(rows[1]);
        check(bases[0], one, one_file);
        check(bases[1], other, other_file);
        same = one == other;
        if (!same)
            fprintf(stderr, "the copies differ: one of them has %ld rows, the other more\n", row - 1);
        if (!same || one != SQLITE_ROW)
            break;
        for (int i = 0; same && i < sqlite3_column_count(rows[0]); ++i) {
            same = is_same_field(rows[0], rows[1], i);
            if (!same)
                fprintf(stderr, "the copies differ in row %ld, column %s\n", row,
                        sqlite3_column_name(rows[0], i));
        }
    }
    for (int i = 0; i < 2; ++i) {
        sqlite3_finalize(rows[i]);
        sqlite3_close(bases[i]);
    }
    return same;
}
