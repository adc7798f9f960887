#include "client_saves.h"
#include "form_openings.h"
#include "milliseconds_of.h"

#include "ui/theme.h"

#include <QCommandLineParser>

#include <algorithm>
#include <cstdio>
#include <cstdlib>

using namespace orvo::bench;

namespace {

constexpr int warming = 5;                // the first rounds of a save warm both sides
constexpr auto day_of_saves = "20260131"; // nothing in the register is of that day

struct benched_save {
    const char* name;
    int rows_of_that_day; ///< what one save leaves behind
    std::vector<member_year> turns;
};

/// Numbers all over the register, as those of new members are; the 9 behind the date of birth is nobody
/// else's.
std::vector<member_year> new_members(int count)
{
    std::vector<member_year> all;
    for (int i = 0; i < count; ++i) {
        const int birth = i * 7919 % (49 * 12 * 28);
        char number[14];
        std::snprintf(number, sizeof number, "%02d%02d%02d9%06d", 50 + birth / 28 / 12, 1 + birth / 28 % 12,
                      1 + birth % 28, i);
        all.push_back({number, {}, {}});
    }
    return all;
}

/// Members all over those of that name, none of them twice, for each save its own.
void give_turns(std::vector<member_year> from, std::initializer_list<benched_save*> saves, int count)
{
    const std::size_t wanted = saves.size() * static_cast<std::size_t>(count);
    if (from.size() < wanted)
        qFatal("bench_saves: %zu members instead of %zu", from.size(), wanted);
    std::size_t at = 0;
    for (int i = 0; i < count; ++i)
        for (benched_save* each : saves)
            each->turns.push_back(from[at++ * from.size() / wanted]);
}

void save_by_turns(orvo::client& c, save_floor* floor, const benched_save& save,
                   const std::function<void(const char* who, double took)>& add)
{
    for (std::size_t i = 0; i < save.turns.size(); ++i) {
        const member_year& whose = save.turns[i];
        const std::function<void()> ready = client_save(c, save.name, whose);
        double took[2];
        for (const bool is_floor : {i % 2 == 0, i % 2 != 0})
            took[is_floor] =
                milliseconds_of([&] { is_floor ? save_on_floor(floor, save.name, whose) : ready(); });
        if (i < warming)
            continue;
        add("client", took[false]);
        add("floor", took[true]);
    }
}

/// Whether both left the same rows, and all those that the saves were to leave.
bool are_same(const std::vector<std::string>& rows, const std::vector<std::string>& others,
              std::size_t expected)
{
    const auto of_that_day = static_cast<std::size_t>(std::ranges::count_if(
        rows, [](const std::string& row) { return row.find(day_of_saves) != std::string::npos; }));
    if (of_that_day != expected || others.size() != rows.size()) {
        std::fprintf(stderr, "bench_saves: %zu rows of the day instead of %zu, of %zu and %zu\n", of_that_day,
                     expected, rows.size(), others.size());
        return false;
    }
    const auto [one, other] = std::ranges::mismatch(rows, others);
    if (one == rows.end())
        return true;
    std::fprintf(stderr, "bench_saves: the rows differ\n%s\n%s\n", one->c_str(), other->c_str());
    return false;
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
    option("server", "The client's register: a file, or postgresql:<connection text>.");
    option("floor-server", "Another register of the same content, for the floor.");
    option("floor-local", "Where to make the floor's copy of the workstation's file.");
    option("name", "The members to pay for and to change: their names are like this.");
    option("openings", "How often to open the form.");
    option("saves", "How many members to register, to pay for and to change.");
    line.process(app);
    const auto number = [&line](const char* name) { return line.value(QString::fromLatin1(name)).toInt(); };
    const auto text = [&line](const char* name) { return line.value(QString::fromLatin1(name)).toUtf8(); };
    const QByteArray engine = text("engine");
    const auto adding = [&](const char* what) {
        return [&, what](const char* who, double took) {
            std::printf("%s %d %s %s 0 %.3f\n", engine.constData(), number("members"), what, who, took);
        };
    };

    orvo::apply_theme(app, orvo::preferred_shade());
    driven_program driven{app};
    driven.start();
    open_forms(driven, app, number("openings"), adding("form"));

    // The copy of the last search, which a change writes too.
    orvo::client& c = driven.running().running_client();
    driven.search(line.value(QStringLiteral("name")));
    const QByteArray local = text("floor-local");
    c.local_conn.direct("vacuum into '" + local.toStdString() + "'");

    const QByteArray server = text("server"), floor_server = text("floor-server");
    const QByteArray pattern = '%' + text("name") + '%';
    const std::vector<member_year> found = latest_years(server, pattern);
    if (found != latest_years(floor_server, pattern)) // reads the floor's too: both start as warm
        qFatal("bench_saves: the registers differ");
    for (const QByteArray& each : {server, floor_server})
        add_rows_of_cascade(each, pattern);
    const int turns = warming + number("saves");
    benched_save registration{"registration", 5, new_members(turns)};
    benched_save payment{"payment", 1, {}};
    benched_save change{"change", 1, {}};
    give_turns(found, {&payment, &change}, turns);

    save_floor* floor = open_save_floor(floor_server, local);
    std::vector<member_year> written;
    std::size_t expected = 0;
    for (const benched_save* each : {&registration, &payment, &change}) {
        save_by_turns(c, floor, *each, adding(each->name));
        written.insert(written.end(), each->turns.begin(), each->turns.end());
        expected += each->turns.size() * static_cast<std::size_t>(each->rows_of_that_day);
    }
    close_save_floor(floor);
    std::fflush(stdout);
    const bool are_same_registers =
        are_same(stored_rows(server, written), stored_rows(floor_server, written), expected);
    const bool are_same_copies =
        are_same(copied_rows(c.folder.file(QStringLiteral("orvo.mdb")).toUtf8(), written),
                 copied_rows(local, written), change.turns.size());
    return are_same_registers && are_same_copies ? 0 : 1;
}
