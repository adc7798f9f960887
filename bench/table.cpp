#include <algorithm>
#include <cmath>
#include <cstdio>
#include <iostream>
#include <map>
#include <string>
#include <tuple>
#include <vector>

/// Reads samples ("engine members what who found value" to a line) and prints the table of the figures, each
/// beside its floor. Ends with 1 where a figure misses what it is to reach or has no samples.

namespace {

constexpr int large_register = 100'000;

using numbers = std::vector<double>;

struct group {
    std::string engine;
    int members;
    std::string what;
    std::string who;
    auto operator<=>(const group&) const = default;
};

/// By the group, then by how many members were found.
std::map<group, std::map<long, numbers>> samples;

/// Of sorted numbers; 0.5 is the median.
double quantile(numbers of, double part)
{
    std::sort(of.begin(), of.end());
    const double at = part * static_cast<double>(of.size() - 1);
    const auto below = static_cast<std::size_t>(at);
    const double rest = at - static_cast<double>(below);
    return below + 1 < of.size() ? of[below] * (1 - rest) + of[below + 1] * rest : of[below];
}

double median(const numbers& of)
{
    return quantile(of, 0.5);
}

template <typename... Given>
std::string text(const char* format, Given... given)
{
    char made[256];
    std::snprintf(made, sizeof made, format, given...);
    return made;
}

/// The median, with the quarters around it.
std::string spread(const numbers& of, const char* unit)
{
    const int decimals = median(of) < 10 ? 2 : 1;
    return text("%.*f %s (%.*f–%.*f)", decimals, median(of), unit, decimals, quantile(of, 0.25), decimals,
                quantile(of, 0.75));
}

std::string thousands(long number)
{
    std::string digits = std::to_string(number);
    for (auto at = static_cast<long>(digits.size()) - 3; at > 0; at -= 3)
        digits.insert(static_cast<std::size_t>(at), ",");
    return digits;
}

bool all_met = true;

void print_row(const std::string& what, const std::string& measured, const std::string& floor,
               const std::string& ratio, const std::string& to_reach, bool met)
{
    std::cout << "| " << what << " | " << measured << " | " << floor << " | " << ratio << " | " << to_reach
              << " | " << (met ? "yes" : "**no**") << " |\n";
    all_met = all_met && met;
}

void print_missing(const std::string& what)
{
    print_row(what, "not measured", "", "", "", false);
}

const std::map<long, numbers>& found_of(const std::string& engine, int members, const char* what,
                                        const char* who)
{
    static const std::map<long, numbers> none;
    const auto at = samples.find({engine, members, what, who});
    return at == samples.end() ? none : at->second;
}

void print_searches(const std::string& engine)
{
    const auto& client = found_of(engine, large_register, "search", "client");
    const auto& floor = found_of(engine, large_register, "search", "floor");
    if (client.size() < 3)
        print_missing("search, " + engine);
    for (const auto& [found, times] : client) {
        const double most = found < 5000 ? 2.0 : 1.5;
        const double ratio = median(times) / median(floor.at(found));
        print_row("search to page 1, " + thousands(found) + " hits, " + engine, spread(times, "ms"),
                  spread(floor.at(found), "ms"), text("%.2f", ratio), text("%.1f times", most),
                  ratio <= most);
    }
}

void print_frame(const std::string& engine, const char* what, const std::string& caption)
{
    const auto& found = found_of(engine, large_register, what, "client");
    if (found.empty())
        return print_missing(caption + ", " + engine);
    const numbers& times = found.begin()->second;
    const double high = quantile(times, 0.95);
    print_row(caption + ", " + engine, text("%.1f ms (median %.1f)", high, median(times)), "", "",
              "95th percentile under 16 ms", high < 16);
}

void print_start()
{
    const auto& client = found_of("embedded", 0, "start", "client");
    const auto& floor = found_of("embedded", 0, "start", "floor");
    if (client.empty() || floor.empty())
        return print_missing("start");
    const double ratio = median(client.at(0)) / median(floor.at(0));
    print_row("start to the login painted", spread(client.at(0), "ms"), spread(floor.at(0), "ms"),
              text("%.2f", ratio), "3 times", ratio <= 3);
}

void print_file(const char* what, const std::string& caption, const char* beside)
{
    const auto& client = found_of("embedded", 0, what, "client");
    const auto& floor = found_of("embedded", 0, what, beside);
    if (client.empty() || floor.empty())
        return print_missing(caption);
    for (const auto& [rows, times] : client) {
        const double ratio = median(times) / median(floor.at(rows));
        print_row(caption + " of " + thousands(rows) + " rows", spread(times, "ms"),
                  spread(floor.at(rows), "ms"), text("%.2f", ratio), "1.3 times", ratio <= 1.3);
    }
}

constexpr double note_of_a_save = 0.5; ///< ms, on its way to the disk

/// What one run measured beside its floor.
/// `more` milliseconds are on top of that many times the floor.
void print_beside_floor(const std::string& engine, const char* what, const std::string& caption, double most,
                        double more = 0)
{
    const auto& client = found_of(engine, large_register, what, "client");
    const auto& floor = found_of(engine, large_register, what, "floor");
    if (client.empty() || floor.empty())
        return print_missing(caption + ", " + engine);
    const double found = median(client.at(0)), least = median(floor.at(0));
    print_row(caption + ", " + engine, spread(client.at(0), "ms"), spread(floor.at(0), "ms"),
              text("%.2f", found / least),
              text("%.1f times", most) + (more > 0 ? text(" and %.1f ms", more) : ""),
              found <= most * least + more);
}

void print_peak(const std::string& engine)
{
    const auto& client = found_of(engine, large_register, "peak", "client");
    const auto& floor = found_of("embedded", 0, "peak", "floor");
    if (client.empty() || floor.empty())
        return print_missing("peak of memory, " + engine);
    const double more = median(client.at(0)) - median(floor.at(0));
    print_row("peak of memory, search of 100,000, " + engine, text("%.1f MB", median(client.at(0))),
              text("%.1f MB", median(floor.at(0))), text("+%.1f MB", more), "60 MB more", more <= 60);
}

/// The exponent of growth: the slope of the least squares through the logarithms.
double exponent(const std::map<int, double>& by_members)
{
    double n = 0, x = 0, y = 0, xx = 0, xy = 0;
    for (const auto& [members, value] : by_members) {
        const double a = std::log(members);
        const double b = std::log(value);
        n += 1, x += a, y += b, xx += a * a, xy += a * b;
    }
    return (n * xy - x * y) / (n * xx - x * x);
}

void print_growth(const std::string& engine, const char* what, const std::string& caption, double most)
{
    std::map<int, double> by_members;
    for (const auto& [key, found] : samples)
        if (key.engine == engine && key.members > 0 && key.what == what && key.who == "client")
            by_members[key.members] =
                median(found.begin()->second); // of a search: the one with the fewest hits
    if (by_members.size() < 3)
        return print_missing("growth of " + caption + ", " + engine);
    std::string sizes;
    std::string values;
    for (const auto& [members, value] : by_members) {
        sizes += (sizes.empty() ? "" : " / ") + thousands(members);
        values += (values.empty() ? "" : " / ") + text("%.1f", value);
    }
    const double slope = exponent(by_members);
    print_row("growth of " + caption + ", " + sizes + " members, " + engine, values + " ms", "",
              text("exponent %.2f", slope), text("at most %.1f", most), slope <= most);
}

void print_receipt_queue(const std::string& engine)
{
    const auto& client = found_of(engine, large_register, "receipt_queue", "client");
    if (client.empty())
        return print_missing("a receipt queue, " + engine);
    const auto& [found, times] = *client.begin();
    print_row("a receipt queue of " + thousands(found) + " payments to page 1, " + engine,
              spread(times, "ms"), "", "", "30 s", median(times) <= 30'000);
}

void print_receipt_statements()
{
    const auto& client = found_of("postgresql", large_register, "receipt_statements", "client");
    const auto& floor = found_of("postgresql", large_register, "receipt_statements", "floor");
    const auto& far_away = found_of("postgresql", large_register, "receipt_line", "client");
    if (client.empty() || floor.empty() || far_away.empty())
        return print_missing("the statements of a receipt queue");
    const auto& [found, times] = *client.begin();
    const std::string caption = "the statements of a queue of " + thousands(found) + " payments, postgresql";
    const double ratio = median(times) / median(floor.at(found));
    print_row(caption, spread(times, "ms"), spread(floor.at(found), "ms"), text("%.2f", ratio), "1.5 times",
              ratio <= 1.5);
    const double time = median(far_away.at(found));
    print_row(caption + ", each answer 50 ms late", text("%.0f ms", time), "", "", "5 s", time <= 5'000);
}

void print_receipt_pdf()
{
    const auto& client = found_of("embedded", large_register, "receipt_pdf", "client");
    const auto& floor = found_of("embedded", large_register, "receipt_pdf", "floor");
    if (client.empty() || floor.empty())
        return print_missing("a PDF of receipts");
    const auto& [pages, times] = *client.begin();
    const double ratio = median(times) / median(floor.at(pages));
    print_row("a PDF of " + thousands(pages) + " receipts", spread(times, "ms"),
              spread(floor.at(pages), "ms"), text("%.2f", ratio), "1.5 times", ratio <= 1.5);
}

void print_notes(const std::string& engine)
{
    for (const char* what : {"click_worked", "page_worked"})
        for (const auto& [found, times] : found_of(engine, large_register, what, "client"))
            std::cout << "- Of a " << std::string{what}.substr(0, std::string{what}.find('_')) << ", "
                      << engine << ", the client's own work: 95th percentile "
                      << text("%.1f ms", quantile(times, 0.95)) << text(", median %.1f ms", median(times))
                      << "\n";
    for (const auto& [found, times] : found_of(engine, large_register, "form", "empty"))
        std::cout
            << "- The form's floor is a window of the same controls with nothing in them, in the form's "
               "place; one without controls, "
            << engine << ": " << spread(times, "ms") << "\n";
    for (const auto& [found, times] : found_of(engine, large_register, "growth_first", "client"))
        std::cout << "- The first search of a session, " << thousands(found) << " hits, " << engine << ": "
                  << spread(times, "ms") << "\n";
    for (const auto& [found, times] : found_of(engine, large_register, "search_list", "client"))
        std::cout << "- To the painting of the list alone, " << thousands(found) << " hits, " << engine
                  << ": " << spread(times, "ms") << "\n";
}

} // namespace

int main(int argc, char** argv)
{
    const std::vector<std::string> engines(argv + 1, argv + argc);
    std::string engine, what, who;
    int members = 0;
    long found = 0;
    double value = 0;
    while (std::cin >> engine >> members >> what >> who >> found >> value)
        samples[{engine, members, what, who}][found].push_back(value);

    std::cout << "| what | measured | floor | ratio | to reach | met |\n|---|---|---|---|---|---|\n";
    for (const std::string& each : engines)
        print_searches(each);
    for (const std::string& each : engines) {
        print_frame(each, "click", "a click on a member to its panels painted");
        print_frame(each, "page", "a page back or forward");
    }
    for (const std::string& each : engines) {
        print_beside_floor(each, "form", "opening the registration form", 2);
        print_beside_floor(each, "registration", "a registration", 1.5, note_of_a_save);
        print_beside_floor(each, "payment", "entering a payment with its settlement", 1.5, note_of_a_save);
        print_beside_floor(each, "change", "changing a member", 1.5, note_of_a_save);
    }
    print_start();
    print_file("workbook", "a workbook", "floor");
    print_file("csv", "a CSV", "codec");
    for (const std::string& each : engines)
        print_receipt_queue(each);
    if (engines.size() > 1)
        print_receipt_statements();
    print_receipt_pdf();
    for (const std::string& each : engines)
        print_peak(each);
    for (const std::string& each : engines) {
        print_growth(each, "growth", "a search with 1 % hits", 1.1);
        print_growth(each, "click", "a click", 0.1);
        print_growth(each, "page", "a page", 0.1);
    }
    std::cout << "\nMedians, in brackets the quarters around them. Beside the table:\n\n";
    for (const auto& [rows, times] : found_of("embedded", 0, "csv", "floor"))
        std::cout
            << "- The floor of a CSV is the toolkit's codec, given all its text at once, and the disk; the "
               "disk alone, given the ready bytes: "
            << spread(times, "ms") << "\n";
    for (const std::string& each : engines)
        print_notes(each);
    return all_met ? 0 : 1;
}
