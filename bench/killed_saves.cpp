#include "client_saves.h"
#include "nobody.h"

#include "client/configuration.h"
#include "dues/rules/payments.h"
#include "dues/rules/yearly_dues.h"
#include "members/rules/member_record.h"
#include "members/rules/member_update.h"
#include "members/rules/workplaces.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QHash>

#include <csignal>
#include <cstdio>
#include <fcntl.h>
#include <random>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

using namespace orvo;

/// Usage: bench_killed_saves --home FOLDER --times N
/// Lets a client without windows save on the register of that folder and kills it, at any moment, that often;
/// each time the next start finishes what its notes tell. Then holds the register against what the clients
/// told as stored, and prints a row of a table. Ends with 1 where something is lost, doubled or half done.

namespace {

const QString today = QStringLiteral("20260131");

constexpr const save_act* acts[]{&registration_act, &member_changed, &member_deleted, &workplace_added,
                                 &payment_added};

/// A client at its start.
struct workstation {
    explicit workstation(const program_folder& folder)
        : c{folder, read_server_address(folder), say, [] {
                return QDateTime{QDate{2026, 1, 31}, QTime{10, 0}};
            }}
    {
        c.session_id = QStringLiteral("kim");
        c.session_branch = QStringLiteral("0");
        for (connection* each : {&c.local_conn, &c.db_conn})
            each->open();
    }

    bench::nobody say;
    client c;
};

/// Saves without end, and tells before and behind each: what a payment was of, which number became which.
class busy_hands {
public:
    /// Members below that number are there to be deleted, and are not paid for: so no payment told of goes.
    busy_hands(client& c, unsigned seed, const QString& to_delete_below)
        : c_{c}, chance_{seed}, serial_{1000 + qint64{seed} * 1000}
    {
        for (const auto row : c.db_conn.read("select pers_no from person_m_tbl order by pers_no"))
            (row.text("pers_no") < to_delete_below ? to_delete_ : members_).append(row.text("pers_no"));
    }

    void save_something()
    {
        const QString pers_no =
            members_[static_cast<qsizetype>(chance_() % static_cast<unsigned>(members_.size()))];
        switch (chance_() % 5) {
        case 0:
            return register_another();
        case 1:
            return renumber(pers_no);
        case 2:
            return carry_out(add_workplace(pers_no, bench::filled_form().workplace, today,
                                           ask(c_.db_conn, workplace_ids_of(pers_no))),
                             QStringLiteral("workplace %1").arg(pers_no));
        case 3:
            if (!to_delete_.empty() && chance_() % 4 == 0)
                return remove(to_delete_.takeFirst());
            [[fallthrough]];
        default:
            return pay(pers_no);
        }
    }

private:
    client& c_;
    std::mt19937 chance_;
    qint64 serial_;
    QStringList members_;
    QStringList to_delete_;

    void carry_out(planned_save what, const QString& told)
    {
        std::puts(qPrintable("begun " + told));
        c_.begin(std::move(what)).carry_out();
        std::puts(qPrintable("stored " + told));
    }
    QString another_number() { return QStringLiteral("%1").arg(++serial_ + 9'900'000'000'000); }
    void pay(const QString& pers_no)
    {
        const std::vector<panel_row> years = dues_years(c_.db_conn, pers_no);
        if (years.empty())
            return;
        const dues_year year{pers_no, years.back().cells.front()};
        const QString amount = QString::number(++serial_);
        carry_out(add_payment(year, years.back().key, {today, {}, amount, QStringLiteral("3")}, today,
                              ask(c_.db_conn, payment_ids_in(year))),
                  "payment " + amount);
    }
    void register_another()
    {
        new_member typed = bench::filled_form();
        const QString pers_no = another_number();
        typed.member.pers_no1 = pers_no.left(6);
        typed.member.pers_no2 = pers_no.right(7);
        typed.agree_pay = QString::number(++serial_);
        carry_out(orvo::register_member(typed, today), "payment " + typed.agree_pay);
        members_.append(pers_no);
    }
    void renumber(const QString& pers_no)
    {
        const rows row = *ask(c_.db_conn, row_on_server(pers_no));
        const QString fresh = another_number();
        std::vector<column_value> columns = edited_columns({}, today);
        const values before = values_before(columns, row.front());
        for (column_value& each : columns)
            each.value = row.front().text(each.column);
        columns.front().value = fresh;
        carry_out(change_member(pers_no, columns, {}, {}, before), "gone " + pers_no);
        members_.replace(members_.indexOf(pers_no), fresh);
    }
    void remove(const QString& pers_no)
    {
        const rows row = *ask(c_.db_conn, row_on_server(pers_no));
        carry_out(delete_member(pers_no, row.front().text("pers_name")), "gone " + pers_no);
    }
};

/// What the clients told, and how often one died in a save.
struct told {
    QStringList begun;
    QStringList stored;
    int died_in_a_save = 0;
};

/// Lets a client save until it is killed.
void live_and_die(const program_folder& folder, unsigned seed, const QString& to_delete_below, told& all)
{
    int line[2];
    if (::pipe2(line, O_CLOEXEC) != 0)
        std::exit(2);
    std::fflush(stdout);
    const pid_t child = ::fork();
    if (child == 0) {
        ::dup2(line[1], STDOUT_FILENO);
        std::setvbuf(stdout, nullptr, _IOLBF, 0);
        try {
            workstation here{folder};
            busy_hands hands{here.c, seed, to_delete_below};
            std::puts("ready");
            while (true)
                hands.save_something();
        } catch (const std::exception& failure) {
            std::fprintf(stderr, "a client failed: %s\n", failure.what());
        }
        ::_exit(3);
    }
    ::close(line[1]);
    QByteArray heard;
    char piece[4096];
    while (!heard.contains("ready\n"))
        if (const ssize_t got = ::read(line[0], piece, sizeof piece); got > 0)
            heard.append(piece, got);
        else
            std::exit(2);
    std::mt19937 chance{seed};
    std::this_thread::sleep_for(std::chrono::microseconds{chance() % 100'000});
    ::kill(child, SIGKILL);
    int status = 0;
    ::waitpid(child, &status, 0);
    if (!WIFSIGNALED(status))
        std::exit(2);
    for (ssize_t got; (got = ::read(line[0], piece, sizeof piece)) > 0;)
        heard.append(piece, got);
    ::close(line[0]);
    for (const QByteArray& each : heard.split('\n'))
        if (each.startsWith("begun "))
            all.begun.append(QString::fromUtf8(each.mid(6)));
        else if (each.startsWith("stored "))
            all.stored.append(QString::fromUtf8(each.mid(7)));
}

struct unsettled_year {
    QString pers_no, val_year;
    qint64 balance;
};

std::vector<unsettled_year> unsettled_years(connection& db)
{
    QHash<QString, qint64> paid;
    for (const auto row : db.read("select * from dues_b_tbl"))
        paid[row.text("pers_no") + u' ' + row.text("val_year")] += row.number("pres_money");
    std::vector<unsettled_year> found;
    for (const auto row : db.read("select * from dues_h_tbl")) {
        const QString pers_no = row.text("pers_no"), val_year = row.text("val_year");
        const qint64 balance = row.number("mem_dues") - paid[pers_no + u' ' + val_year];
        if (row.number("yet_money") != balance)
            found.push_back({pers_no, val_year, balance});
    }
    return found;
}

/// The demo register has years that are not settled, as registers in use do.
void settle_all(connection& db)
{
    for (const unsettled_year& each : unsettled_years(db))
        db.write(
            "update dues_h_tbl set yet_money='{balance}' where pers_no='{pers_no}' and val_year='{val_year}'",
            {{"balance", each.balance}, {"pers_no", each.pers_no}, {"val_year", each.val_year}});
}

/// What is wrong with the register by what was told.
QStringList faults_of(connection& db, const told& all)
{
    QStringList faults;
    QHash<QString, int> amounts;
    for (const auto row : db.read("select * from dues_b_tbl"))
        ++amounts[row.text("pres_money")];
    QSet<QString> members;
    for (const auto row : db.read("select pers_no from person_m_tbl"))
        members.insert(row.text("pers_no"));
    QSet<QString> gone;
    for (const QString& each : all.stored)
        if (each.startsWith(QLatin1String("gone ")))
            gone.insert(each.mid(5));
        else if (each.startsWith(QLatin1String("payment ")) && amounts[each.mid(8)] == 0)
            faults.append("lost: " + each);
    for (const QString& each : all.begun)
        if (each.startsWith(QLatin1String("payment ")) && amounts[each.mid(8)] > 1)
            faults.append("doubled: " + each);
    for (const unsettled_year& each : unsettled_years(db))
        faults.append("not settled: " + each.pers_no + u' ' + each.val_year);
    for (const char* table : {"dues_h_tbl", "dues_b_tbl", "company", "id_tbl"})
        for (const auto row : db.read(std::string{"select pers_no from "} + table))
            // A change of number leaves the web login behind, as it is to be.
            if (!members.contains(row.text("pers_no")) && std::string_view{table} != "id_tbl")
                faults.append(QStringLiteral("without a member: %1 in %2").arg(row.text("pers_no"), table));
    for (const QString& each : gone)
        if (members.contains(each))
            faults.append("still there: " + each);
    return faults;
}

} // namespace

int main(int argc, char** argv)
{
    const QCoreApplication app{argc, argv};
    QCommandLineParser line;
    line.addOption(
        {QStringLiteral("home"), QStringLiteral("A program folder with a filled register."), "folder"});
    line.addOption({QStringLiteral("times"), QStringLiteral("How often to kill."), "n", "100"});
    line.process(app);
    const program_folder folder = open_program_folder(line.value(QStringLiteral("home")));
    const int times = line.value(QStringLiteral("times")).toInt();
    try {
        QString to_delete_below;
        {
            workstation first{folder};
            const rows members = first.c.db_conn.read("select pers_no from person_m_tbl order by pers_no");
            to_delete_below = members[members.size() / 4].text("pers_no");
            settle_all(first.c.db_conn);
        }
        told all;
        for (int i = 0; i < times; ++i) {
            live_and_die(folder, static_cast<unsigned>(i + 1), to_delete_below, all);
            workstation next{folder};
            for (const save_note& each : next.c.saves.unfinished()) {
                ++all.died_in_a_save;
                auto begun = next.c.take_up(each, acts);
                if (const QString why = begun->objection(); !why.isEmpty())
                    std::fprintf(stderr, "not finished: %s\n", qPrintable(why));
                else
                    begun->carry_out();
            }
        }
        workstation last{folder};
        QStringList faults = faults_of(last.c.db_conn, all);
        for (const save_note& each : last.c.saves.unfinished())
            faults.append("unfinished: " + each.act);
        std::printf("| %s | %d | %d | %lld | %lld |\n", qPrintable(in_words(last.c.server)), times,
                    all.died_in_a_save, static_cast<long long>(all.stored.size()),
                    static_cast<long long>(faults.size()));
        for (const QString& each : faults.mid(0, 20))
            std::fprintf(stderr, "%s\n", qPrintable(each));
        return faults.isEmpty() ? 0 : 1;
    } catch (const std::exception& failure) {
        std::fprintf(stderr, "bench_killed_saves: %s\n", failure.what());
        return 1;
    }
}
