#include "driven_program.h"
#include "floors.h"
#include "peak_memory.h"
#include "ui/theme.h"

#include <QCommandLineParser>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <random>
#include <string>

using namespace orvo::bench;

namespace {

/// A line for the table: engine, members in the register, what was done, who did it, members found, how much.
class samples {
public:
    samples(QString engine, int members) : engine_{std::move(engine)}, members_{members} {}

    void add(const char* what, const char* who, long found, double value) const
    {
        std::printf("%s %d %s %s %ld %.3f\n", qPrintable(engine_), members_, what, who, found, value);
        std::fflush(stdout);
    }

private:
    QString engine_;
    int members_;
};

struct floor_closer {
    void operator()(search_floor* floor) const { close_floor(floor); }
};
using floor_handle = std::unique_ptr<search_floor, floor_closer>;

struct search_plan {
    QByteArray name; ///< of the samples
    QString word;
    int times;
};

search_plan plan_of(const QString& text)
{
    const QStringList parts = text.split(QLatin1Char(':'));
    if (parts.size() != 3)
        qFatal("bench_work: a search is name:word:times, not %s", qPrintable(text));
    return {parts[0].toLatin1(), parts[1], parts[2].toInt()};
}

/// The client and the floor by turns, so that both meet the same weather. The first round warms both and
/// stands for itself.
void search_by_turns(driven_program& client, search_floor* floor, const search_plan& plan, const samples& to,
                     const QStringList& local_files)
{
    const QByteArray pattern = "%" + plan.word.toUtf8() + "%";
    for (int round = 0; round <= plan.times; ++round) {
        long found = 0;
        double floor_time = 0;
        const auto run_the_floor = [&] {
            const auto started = std::chrono::steady_clock::now();
            found = run_floor(floor, pattern.constData());
            floor_time =
                std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - started).count();
        };
        if (round % 2 == 0)
            run_the_floor();
        const auto client_times = client.search(plan.word);
        if (round % 2 != 0)
            run_the_floor();
        if (client.page_count() != (found + 14) / 15) {
            std::fprintf(stderr, "bench_work: the floor found %ld members, the client %d pages of them\n",
                         found, client.page_count());
            std::exit(1);
        }
        if (round == 0) {
            to.add((plan.name + "_first").constData(), "client", found, client_times.window);
            continue;
        }
        to.add(plan.name.constData(), "client", found, client_times.window);
        to.add((plan.name + "_list").constData(), "client", found, client_times.list);
        to.add(plan.name.constData(), "floor", found, floor_time);
    }
    if (!are_same_copies(qPrintable(local_files[0]), qPrintable(local_files[1])))
        std::exit(1);
}

/// Members and pages all over the result of a search.
void click_and_turn(driven_program& client, int times, unsigned seed, const samples& to)
{
    client.search(QStringLiteral("%"));
    std::mt19937 random{seed};
    std::vector<int> pages;
    std::uniform_int_distribution<int> any_page{2, client.page_count() - 1};
    for (int i = 0; i < times; ++i)
        pages.push_back(any_page(random));
    std::sort(pages.begin(), pages.end());
    const auto add = [&to](const std::string& what, driven_program::click_times taken) {
        to.add(what.c_str(), "client", 0, taken.passed);
        to.add((what + "_worked").c_str(), "client", 0, taken.worked);
    };
    for (const int page : pages) {
        client.go_to_page(page);
        add("page", client.turn_page(random() % 2 == 0));
        std::uniform_int_distribution<int> any_row{0, client.members_on_page() - 1};
        add("click", client.click_member(any_row(random)));
    }
}

} // namespace

int main(int argc, char** argv)
{
    watched_application app{argc, argv};
    QApplication::setApplicationName(QStringLiteral("orvo"));
    QCommandLineParser line;
    const auto option = [&line](const char* name, const char* what) {
        line.addOption({QString::fromLatin1(name), QString::fromLatin1(what), QString::fromLatin1(name)});
    };
    option("engine", "What the samples are to say of the engine.");
    option("members", "... and of the number of members.");
    option("floor-server", "The register for the floor: a file, or postgresql:<connection text>.");
    option("floor-local", "The workstation's file for the floor.");
    option("search", "A word and how often to search for it, as name-of-the-samples:word:times.");
    option("clicks", "How many members to click and pages to turn.");
    option("seed", "Another number clicks other members.");
    option("peak", "A word: search for it once and tell the peak of memory.");
    line.process(app);

    orvo::apply_theme(app, orvo::preferred_shade());
    driven_program client{app};
    client.start();
    const samples to{line.value(QStringLiteral("engine")), line.value(QStringLiteral("members")).toInt()};

    if (line.isSet(QStringLiteral("search"))) {
        const QString server = line.value(QStringLiteral("floor-server"));
        const QString local = line.value(QStringLiteral("floor-local"));
        const QString mark = QStringLiteral("postgresql:");
        const floor_handle floor{
            server.startsWith(mark)
                ? open_floor_on_postgresql(qPrintable(server.mid(mark.size())), qPrintable(local))
                : open_floor_on_file(qPrintable(server), qPrintable(local))};
        for (const QString& each : line.values(QStringLiteral("search")))
            search_by_turns(client, floor.get(), plan_of(each), to,
                            {qEnvironmentVariable("ORVO_HOME") + QStringLiteral("/orvo.mdb"), local});
    }
    if (line.isSet(QStringLiteral("clicks")))
        click_and_turn(client, line.value(QStringLiteral("clicks")).toInt(),
                       line.value(QStringLiteral("seed")).toUInt(), to);
    if (line.isSet(QStringLiteral("peak"))) {
        client.search(line.value(QStringLiteral("peak")));
        to.add("peak", "client", 0, peak_memory());
    }
    return 0;
}
