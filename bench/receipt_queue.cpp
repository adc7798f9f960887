#include "milliseconds_of.h"
#include "nobody.h"
#include "receipt_period.h"

#include "client/client.h"
#include "client/configuration.h"
#include "db/dialect.h"
#include "dues/receipts/rules/receipt_search.h"
#include "support/pausable_proxy.h"

#include <QCoreApplication>

#include <libpq-fe.h>
#include <sqlite3.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <map>

/// The statements of a receipt queue on the PostgreSQL register that ORVO_HOME names: 20,000 payments
/// searched by period and queued in the local file, the client's rule and the same statements by the engines'
/// C interfaces, pipelined, by turns; and the rule over a line whose every answer comes 50 ms later. Usage:
/// bench_receipt_queue MEMBERS CONNECTION_TEXT FLOOR_LOCAL ROUNDS

using namespace orvo;
using orvo::bench::milliseconds_of;

namespace {

[[noreturn]] void give_up(const std::string& why)
{
    std::fprintf(stderr, "bench_receipt_queue: %s\n", why.c_str());
    std::exit(1);
}

struct sent_text {
    const char* name;
    std::string sql;
};

std::string of_register(std::string_view text)
{
    return translate(statement_text{text}, text, engine::postgresql, database::server, false).sql;
}

const sent_text members{
    "members",
    of_register(
        "select a.pers_no as pers_no,a.get_mail_place as get_mail,b.* from person_m_tbl a ,dues_b_tbl b "
        "where a.pers_no=b.pers_no and b.pers_mem_day between '{from}' and '{to}'")};
const sent_text home{
    "home",
    of_register("select a.*,b.*,c.mem_kind as mem_kind,d.branch_name as branch_name from person_m_tbl "
                "a,dues_b_tbl b,money_member c,branch_code d Where a.pers_no = b.pers_no And "
                "a.code_member = c.code_member And a.code_bran = d.code_bran and a.pers_no='{pers_no}' "
                "and b.pers_mem_day between '{from}' and '{to}'")};
const sent_text workplace{
    "workplace",
    of_register(
        "select a.*,b.*,c.mem_kind as mem_kind,d.branch_name as branch_name,e.code_post as c_code_post,"
        "e.company_name as company_name,e.company_add as company_add from person_m_tbl a,dues_b_tbl "
        "b,money_member c,branch_code d,company e Where a.pers_no = b.pers_no and a.pers_no=e.pers_no And "
        "a.code_member = c.code_member And a.code_bran = d.code_bran and a.pers_no='{pers_no}' and "
        "e.primary_flag='1' and b.pers_mem_day between '{from}' and '{to}'")};

using result = std::unique_ptr<PGresult, decltype([](PGresult* each) { PQclear(each); })>;

class raw_queue {
public:
    raw_queue(const char* connection_text, const char* local_file) : line_{PQconnectdb(connection_text)}
    {
        if (PQstatus(line_) != CONNECTION_OK || sqlite3_open(local_file, &local_) != SQLITE_OK)
            give_up("the floor's databases do not open");
        run("pragma synchronous=normal");
        run("pragma journal_mode=wal");
        for (const sent_text* each : {&members, &home, &workplace})
            expect(result{PQprepare(line_, each->name, each->sql.c_str(), 0, nullptr)}, PGRES_COMMAND_OK);
        sqlite3_prepare_v2(local_,
                           "insert into print_tbl(pers_no,dues_id,pers_name,code_post,company_name,pers_add,"
                           "pers_call,pres_money,mem_kind,lic_no,branch_name,code_member,in_date) values "
                           "(?,?,?,?,?,?,?,?,?,?,?,?,?)",
                           -1, &insert_, nullptr);
        if (!insert_)
            give_up(sqlite3_errmsg(local_));
    }
    ~raw_queue()
    {
        sqlite3_finalize(insert_);
        sqlite3_close(local_);
        PQfinish(line_);
    }

    void queue(const char* from, const char* to)
    {
        const char* period[]{from, to};
        const result found{PQexecPrepared(line_, members.name, 2, period, nullptr, nullptr, 0)};
        expect(found, PGRES_TUPLES_OK);
        const int number = PQfnumber(found.get(), "pers_no");
        const int place = PQfnumber(found.get(), "get_mail");
        run("begin");
        run("delete from print_tbl");
        std::vector<bool> to_workplace;
        const int count = PQntuples(found.get());
        PQenterPipelineMode(line_);
        for (int at = 0; at < count;) {
            to_workplace.clear();
            for (; at < count && to_workplace.size() < 500; ++at) {
                const std::string mail = PQgetvalue(found.get(), at, place);
                if (mail != "직장" && mail != "자택")
                    continue;
                to_workplace.push_back(mail == "직장");
                const char* given[]{PQgetvalue(found.get(), at, number), from, to};
                PQsendQueryPrepared(line_, to_workplace.back() ? workplace.name : home.name, 3, given,
                                    nullptr, nullptr, 0);
            }
            PQpipelineSync(line_);
            PQflush(line_);
            for (const bool each : to_workplace)
                take(each);
            expect(result{PQgetResult(line_)}, PGRES_PIPELINE_SYNC);
        }
        PQexitPipelineMode(line_);
        run("commit");
    }

private:
    PGconn* line_;
    sqlite3* local_ = nullptr;
    sqlite3_stmt* insert_ = nullptr;
    std::map<bool, std::vector<int>> columns_; ///< of a workplace's result, and of a home's

    void expect(const result& got, ExecStatusType wanted)
    {
        if (PQresultStatus(got.get()) != wanted)
            give_up(PQerrorMessage(line_));
    }
    void run(const char* text)
    {
        if (sqlite3_exec(local_, text, nullptr, nullptr, nullptr) != SQLITE_OK)
            give_up(sqlite3_errmsg(local_));
    }

    void bind(int at, const char* text, int size = -1)
    {
        sqlite3_bind_text(insert_, at, text, size, SQLITE_TRANSIENT);
    }

    void take(bool is_workplace)
    {
        const result payments{PQgetResult(line_)};
        expect(payments, PGRES_TUPLES_OK);
        if (PQgetResult(line_))
            give_up("more than one result of a statement");
        std::vector<int>& columns = columns_[is_workplace];
        if (columns.empty())
            for (const char* name :
                 {"pers_no", "dues_id", "pers_name", is_workplace ? "c_code_post" : "code_post",
                  "company_name", is_workplace ? "company_add" : "pers_add", "pers_call", "pres_money",
                  "mem_kind", "lic_no", "branch_name", "code_member", "pers_mem_day"})
                columns.push_back(PQfnumber(payments.get(), name));
        for (int row = 0; row < PQntuples(payments.get()); ++row) {
            const auto field = [&](std::size_t column) {
                return PQgetvalue(payments.get(), row, columns[column]);
            };
            for (const int each : {0, 2, 5, 6, 8, 9, 10})
                bind(each + 1, field(static_cast<std::size_t>(each)),
                     PQgetlength(payments.get(), row, columns[static_cast<std::size_t>(each)]));
            for (const int each : {1, 7, 11})
                sqlite3_bind_int64(insert_, each + 1, std::atoll(field(static_cast<std::size_t>(each))));
            const std::string post = field(3);
            bind(4, (post.substr(0, 3) + '-' + post.substr(post.size() > 3 ? post.size() - 3 : 0)).c_str());
            if (is_workplace)
                bind(5, field(4));
            else
                bind(5, "", 0);
            const std::string day = field(12);
            bind(13, (day.substr(0, 4) + "    " + day.substr(4, 2) + "   " + day.substr(6)).c_str());
            if (sqlite3_step(insert_) != SQLITE_DONE)
                give_up(sqlite3_errmsg(local_));
            sqlite3_reset(insert_);
        }
    }
};

/// How many receipts stand in one of the queues and not in the other.
long differences(const std::string& one_file, const std::string& other_file)
{
    const std::string columns =
        "pers_no,dues_id,pers_name,code_post,company_name,pers_add,pers_call,pres_money,"
        "mem_kind,lic_no,branch_name,code_member,in_date from ";
    const std::string all = "select " + columns + "main.print_tbl",
                      others = "select " + columns + "other.print_tbl";
    sqlite3* base = nullptr;
    sqlite3_stmt* count = nullptr;
    sqlite3_open(one_file.c_str(), &base);
    sqlite3_exec(base, ("attach '" + other_file + "' as other").c_str(), nullptr, nullptr, nullptr);
    sqlite3_prepare_v2(base,
                       ("select (select count(*) from (" + all + " except " + others +
                        ")) + (select count(*) from (" + others + " except " + all + "))")
                           .c_str(),
                       -1, &count, nullptr);
    if (sqlite3_step(count) != SQLITE_ROW)
        give_up(sqlite3_errmsg(base));
    const long found = static_cast<long>(sqlite3_column_int64(count, 0));
    sqlite3_finalize(count);
    sqlite3_close(base);
    return found;
}

} // namespace

int main(int argc, char** argv)
{
    if (argc != 5)
        give_up("MEMBERS CONNECTION_TEXT FLOOR_LOCAL ROUNDS");
    const QCoreApplication app{argc, argv};
    bench::nobody say;
    const program_folder folder = find_program_folder();
    client c{folder, read_server_address(folder), say};
    const QDate from{2025, 1, 2};
    try {
        c.db_conn.open();
        c.local_conn.open();
        const std::optional<QDate> to = bench::last_day_of_queue(c.db_conn, from);
        if (!to)
            give_up("the register has too few payments");
        const period_receipts wanted{paid_at::head_office, bench::day_text(from), bench::day_text(*to), "0"};
        const searcher by{"kim", QDateTime{from, QTime{10, 0}}};
        const auto tell = [&](const char* what, const char* who, double value) {
            std::printf("postgresql %s %s %s %lld %.3f\n", argv[1], what, who,
                        static_cast<long long>(bench::queued_payments), value);
            std::fflush(stdout);
        };
        const auto queue_on = [&](connection& db) {
            std::size_t queued = 0;
            const double taken =
                milliseconds_of([&] { queued = queue_receipts(db, c.local_conn, wanted, by)->size(); });
            if (queued < bench::queued_payments * 9 / 10) // some members have stopped their mail
                give_up("too few receipts");
            return taken;
        };
        for (int round = 0; round < std::atoi(argv[4]); ++round)
            for (const bool is_client : {round % 2 == 0, round % 2 != 0}) {
                if (is_client) {
                    tell("receipt_statements", "client", queue_on(c.db_conn));
                    continue;
                }
                raw_queue raw{argv[2], argv[3]};
                tell("receipt_statements", "floor", milliseconds_of([&] {
                         raw.queue(wanted.from.toUtf8().constData(), wanted.to.toUtf8().constData());
                     }));
            }
        if (differences(folder.file(QStringLiteral("orvo.mdb")).toStdString(), argv[3]) != 0)
            give_up("the floor queued other receipts");
        pausable_proxy far_away{c.server};
        far_away.delay_answers(std::chrono::milliseconds{50});
        connection db = make_connection(far_away.address(), database::server);
        db.open();
        tell("receipt_line", "client", queue_on(db));
    } catch (const db_failure& failure) {
        give_up(failure.what());
    }
    return 0;
}
