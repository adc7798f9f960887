#include "save_floor.h"

#include "floor_statements.h"

#include <libpq-fe.h>
#include <sqlite3.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <functional>
#include <memory>

namespace {

constexpr const char* written_tables[] = {"person_m_tbl", "dues_h_tbl",    "dues_b_tbl", "id_tbl",
                                          "contract",     "contract_list", "company",    "supplement"};
constexpr int column_of_mem_dues = 3;

[[noreturn]] void give_up(const char* what, const char* why)
{
    std::fprintf(stderr, "floor of the saves: %s: %s\n", what, why);
    std::exit(1);
}

/// What the fields of one turn take, by field::of.
struct turn {
    const member_year& whose;
    std::int64_t balance = 0;
    std::string balance_digits{};

    const char* text(const field& of) const
    {
        switch (of.differs_by) {
        case field::of::pers_no:
            return whose.pers_no.c_str();
        case field::of::val_year:
            return whose.val_year.c_str();
        case field::of::code_member:
            return whose.code_member.c_str();
        case field::of::balance:
            return balance_digits.c_str();
        case field::of::nothing_else:
            break;
        }
        return of.text;
    }
};

/// An engine's own interface.
class bare_engine {
public:
    virtual ~bare_engine() = default;
    virtual void prepare(const step& what) = 0;
    /// The number in that column of the first row; 0 where there is no row or a null. Of a step that is to
    /// find nothing, a row ends the process.
    virtual std::int64_t run(const step& what, const turn& with, int column) = 0;
    /// Each field of a row with a mark of its kind before it.
    virtual void read(const std::string& query, const std::function<void(std::vector<std::string>)>& row) = 0;
};

class bare_file : public bare_engine {
public:
    bare_file(const char* path, const char* durability)
    {
        check(sqlite3_open_v2(path, &file_, SQLITE_OPEN_READWRITE, nullptr), path);
        check(sqlite3_exec(file_, durability, nullptr, nullptr, nullptr), durability);
        check(sqlite3_exec(file_, "pragma journal_mode=wal", nullptr, nullptr, nullptr), "journal");
    }
    ~bare_file() override
    {
        for (const auto& [what, statement] : prepared_)
            sqlite3_finalize(statement);
        sqlite3_close(file_);
    }
    void prepare(const step& what) override { prepared_[&what] = prepared(what.sql, what.name); }
    std::int64_t run(const step& what, const turn& with, int column) override
    {
        sqlite3_stmt* statement = prepared_[&what];
        for (int i = 0; i < what.count; ++i) {
            const field& each = what.fields[static_cast<std::size_t>(i)];
            if (each.differs_by == field::of::balance)
                sqlite3_bind_int64(statement, i + 1, with.balance);
            else if (each.is_number)
                sqlite3_bind_int64(statement, i + 1, std::strtoll(with.text(each), nullptr, 10));
            else
                sqlite3_bind_text(statement, i + 1, with.text(each), -1, SQLITE_STATIC);
        }
        std::int64_t found = 0;
        int result = sqlite3_step(statement);
        if (result == SQLITE_ROW) {
            if (what.is == part::finds_nothing)
                give_up(what.name, "there is a row");
            found = sqlite3_column_int64(statement, column);
            result = sqlite3_step(statement);
        }
        check(result, what.name);
        sqlite3_reset(statement);
        return found;
    }
    void read(const std::string& query, const std::function<void(std::vector<std::string>)>& row) override
    {
        sqlite3_stmt* rows = prepared(query.c_str(), "a query");
        int result;
        while ((result = sqlite3_step(rows)) == SQLITE_ROW) {
            std::vector<std::string> fields;
            for (int i = 0; i < sqlite3_column_count(rows); ++i)
                fields.push_back(std::to_string(sqlite3_column_type(rows, i)) +
                                 reinterpret_cast<const char*>(sqlite3_column_text(rows, i)));
            row(std::move(fields));
        }
        check(result, "a query");
        sqlite3_finalize(rows);
    }

private:
    sqlite3* file_ = nullptr;
    std::map<const step*, sqlite3_stmt*> prepared_;

    void check(int result, const char* what)
    {
        if (result != SQLITE_OK && result != SQLITE_DONE)
            give_up(what, sqlite3_errmsg(file_));
    }
    sqlite3_stmt* prepared(const char* sql, const char* name)
    {
        sqlite3_stmt* statement = nullptr;
        check(sqlite3_prepare_v3(file_, sql, -1, SQLITE_PREPARE_PERSISTENT, &statement, nullptr), name);
        return statement;
    }
};

class bare_line : public bare_engine {
public:
    explicit bare_line(const char* text) : line_{PQconnectdb(text)}
    {
        if (PQstatus(line_) != CONNECTION_OK)
            give_up(text, PQerrorMessage(line_));
    }
    ~bare_line() override { PQfinish(line_); }
    void prepare(const step& what) override
    {
        PQclear(checked(PQprepare(line_, what.name, what.sql, 0, nullptr), what.name));
    }
    std::int64_t run(const step& what, const turn& with, int column) override
    {
        const char* given[most_fields];
        for (int i = 0; i < what.count; ++i)
            given[i] = with.text(what.fields[static_cast<std::size_t>(i)]);
        PGresult* result =
            checked(PQexecPrepared(line_, what.name, what.count, given, nullptr, nullptr, 0), what.name);
        std::int64_t found = 0;
        if (PQntuples(result) > 0) {
            if (what.is == part::finds_nothing)
                give_up(what.name, "there is a row");
            found = std::strtoll(PQgetvalue(result, 0, column), nullptr, 10);
        }
        PQclear(result);
        return found;
    }
    void read(const std::string& query, const std::function<void(std::vector<std::string>)>& row) override
    {
        PGresult* rows = checked(PQexec(line_, query.c_str()), "a query");
        for (int at = 0; at < PQntuples(rows); ++at) {
            std::vector<std::string> fields;
            for (int i = 0; i < PQnfields(rows); ++i)
                fields.push_back(std::to_string(PQgetisnull(rows, at, i)) + PQgetvalue(rows, at, i));
            row(std::move(fields));
        }
        PQclear(rows);
    }

private:
    PGconn* line_;

    PGresult* checked(PGresult* result, const char* what)
    {
        if (PQresultStatus(result) != PGRES_COMMAND_OK && PQresultStatus(result) != PGRES_TUPLES_OK)
            give_up(what, PQresultErrorMessage(result));
        return result;
    }
};

std::unique_ptr<bare_engine> open_engine(const char* server)
{
    constexpr const char mark[] = "postgresql:";
    if (std::strncmp(server, mark, sizeof mark - 1) == 0)
        return std::make_unique<bare_line>(server + sizeof mark - 1);
    return std::make_unique<bare_file>(server, "pragma synchronous=full");
}

std::unique_ptr<bare_engine> open_copy(const char* local_file)
{
    return std::make_unique<bare_file>(local_file, "pragma synchronous=off");
}

void append_rows(bare_engine& from, const std::string& table, const std::vector<member_year>& of,
                 std::vector<std::string>& lines)
{
    std::string numbers;
    for (const member_year& each : of)
        numbers += (numbers.empty() ? "'" : ",'") + each.pers_no + "'";
    from.read("select * from " + table + " where pers_no in (" + numbers + ")",
              [&](const std::vector<std::string>& fields) {
                  std::string& line = lines.emplace_back(table);
                  for (const std::string& field : fields)
                      line += '|' + field;
              });
    std::ranges::sort(lines);
}

} // namespace

struct save_floor {
    std::unique_ptr<bare_engine> server;
    std::unique_ptr<bare_engine> local;

    bare_engine& of(const step& what) { return what.is == part::local ? *local : *server; }
};

save_floor* open_save_floor(const char* server, const char* local_file)
{
    auto* floor = new save_floor{open_engine(server), open_copy(local_file)};
    for (const auto& [name, steps] : floor_saves())
        for (const step& each : steps)
            floor->of(each).prepare(each);
    return floor;
}

void close_save_floor(save_floor* floor)
{
    delete floor;
}

void save_on_floor(save_floor* floor, const std::string& save, const member_year& whose)
{
    turn now{whose};
    for (const step& each : floor_saves().at(save)) {
        if ((each.is == part::where_settled && now.balance > 0) ||
            (each.is == part::where_open && now.balance <= 0))
            continue;
        const std::int64_t found =
            floor->of(each).run(each, now, each.is == part::owed ? column_of_mem_dues : 0);
        if (each.is == part::paid)
            now.balance -= found;
        if (each.is == part::owed) {
            now.balance += found;
            now.balance_digits = std::to_string(now.balance);
        }
    }
}

std::vector<member_year> latest_years(const char* server, const char* name_pattern)
{
    std::vector<member_year> found;
    open_engine(server)->read(
        "select pers_no,val_year,code_member from dues_h_tbl where pers_no in (select pers_no from "
        "person_m_tbl where pers_name like '" +
            std::string{name_pattern} + "') order by pers_no,val_year desc",
        [&found](const std::vector<std::string>& fields) {
            member_year one{fields[0].substr(1), fields[1].substr(1), fields[2].substr(1)};
            if (found.empty() || found.back().pers_no != one.pers_no)
                found.push_back(std::move(one));
        });
    return found;
}

void add_rows_of_cascade(const char* server, const char* name_pattern)
{
    const auto to = open_engine(server);
    const std::string members = " from person_m_tbl where pers_name like '" + std::string{name_pattern} + "'";
    for (const char* rows :
         {"contract(con_day,pers_no,con_amount,con_money) select '20250301',pers_no,500000,50000",
          "contract_list(con_day,con_date,pers_no,con_money) select '20250301','20250401',pers_no,50000",
          "supplement(pers_no,exe_year,code_bran) select pers_no,'2026',9"})
        to->read("insert into " + (rows + members), [](const std::vector<std::string>&) {});
}

std::vector<std::string> stored_rows(const char* server, const std::vector<member_year>& of)
{
    std::vector<std::string> lines;
    const auto from = open_engine(server);
    for (const char* table : written_tables)
        append_rows(*from, table, of, lines);
    return lines;
}

std::vector<std::string> copied_rows(const char* local_file, const std::vector<member_year>& of)
{
    std::vector<std::string> lines;
    append_rows(*open_copy(local_file), "person_m_tbl", of, lines);
    return lines;
}
