#include "nobody.h"
#include "working_day.h"

#include "client/configuration.h"
#include "client/local_file.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QTextStream>

#include <cstdio>

using namespace orvo;

/// One workstation of many, without windows: bench/load.sh starts them. It opens what the program opens at
/// its start, says "ready", waits for the end of its standard input, works, and says "evening".

namespace {

QDateTime day_of_load() // nothing in the register is of that day
{
    return {QDate{2026, 1, 31}, QTime{10, 0}};
}

} // namespace

int main(int argc, char** argv)
{
    const QCoreApplication app{argc, argv};
    QCommandLineParser line;
    const auto option = [&line](const char* name, const char* what) {
        line.addOption({QString::fromLatin1(name), QString::fromLatin1(what), QString::fromLatin1(name)});
    };
    option("home", "The program folder, with conf/connection.ini.");
    option("number", "Of the workstation; no two of a register may have the same.");
    option("members", "The numbers of its members, with commas between.");
    option("seconds", "How long its day is.");
    option("pause", "How long it rests between two things, on average, in ms.");
    line.process(app);
    const auto text = [&line](const char* name) { return line.value(QString::fromLatin1(name)); };

    std::setvbuf(stdout, nullptr, _IOLBF, 0); // what it told stands, whatever ends it
    bench::nobody say;
    const program_folder folder = open_program_folder(text("home"));
    client c{folder, read_server_address(folder), say, day_of_load};
    c.session_branch = QStringLiteral("0");
    try {
        c.db_conn.open();
        c.mail_conn.open();
        remake_local_file(c);
    } catch (const db_failure& failure) {
        std::fprintf(stderr, "bench_workstation: %s\n", failure.what());
        return 1;
    }
    bench::working_day day{
        c,
        {text("number").toUInt(), bench::milliseconds{text("pause").toInt()}, std::chrono::seconds{30}},
        text("members").split(u',')};
    std::puts("ready");
    while (std::getchar() != EOF) {
    }
    day.work_until(std::chrono::steady_clock::now() + std::chrono::seconds{text("seconds").toInt()});
    std::puts("evening");
    return 0;
}
