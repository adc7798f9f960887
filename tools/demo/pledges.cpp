#include "demo/days.h"
#include "demo/fillers.h"

#include <algorithm>

namespace orvo::demo {

namespace {

/// The console holds an instalment's number in 16 bits, and operators add more.
constexpr int most_instalments = 9000;
constexpr int longest_plan = 10;

struct pledge {
    const person* who;
    QDate day;
    int amount;
    bool given_up;
    std::vector<std::pair<QDate, int>> instalments;
};

pledge draw_pledge(random_stream& random, const plan& what, const person& who)
{
    const QDate begins{who.lifetime, 1, 2};
    pledge made{&who, {}, kind_of(who.kind).dues(), false, {}};
    made.day = day_between(random, begins, std::min(QDate{who.lifetime, 12, 20}, what.today));
    made.given_up = random.chance(50);
    const int parts = random.between(2, longest_plan);
    const int part = made.amount / parts;
    const int met = made.given_up        ? random.below(parts)
                    : random.chance(600) ? parts
                                         : random.between(0, parts);
    QDate day = made.day;
    for (int i = 1; i <= met && day <= what.today; ++i) {
        made.instalments.emplace_back(day, i == parts ? made.amount - part * (parts - 1) : part);
        day = day.addDays(random.between(28, 100));
    }
    return made;
}

/// However large the register is, the pledges are spread over all of it.
std::vector<pledge> draw_pledges(const plan& what, const std::vector<person>& people)
{
    std::vector<const person*> candidates;
    for (const person& each : people)
        if (each.lifetime)
            candidates.push_back(&each);
    const auto room = static_cast<std::size_t>(most_instalments / longest_plan);
    const std::size_t count = std::min(room, candidates.size() * 6 / 10);
    std::vector<pledge> all;
    for (std::size_t i = 0; i < count; ++i) {
        const person& who = *candidates[i * candidates.size() / count];
        random_stream random{what.seed, "pledges", static_cast<std::uint64_t>(who.number)};
        all.push_back(draw_pledge(random, what, who));
    }
    return all;
}

} // namespace

void fill_pledges(loader& into, const plan& what, const std::vector<person>& people)
{
    const std::vector<pledge> pledges = draw_pledges(what, people);
    auto head = pledges.begin();
    into.fill("contract", [&](row& next) {
        if (head == pledges.end())
            return false;
        int paid = 0;
        for (const auto& [day, amount] : head->instalments)
            paid += amount;
        next << stored(head->day) << head->who->pers_no << head->amount << paid << "0"
             << (head->given_up ? "1" : "0");
        ++head;
        return true;
    });

    auto of = pledges.begin();
    std::size_t at = 0;
    into.fill("contract_list", [&](row& next) {
        while (of != pledges.end() && at == of->instalments.size()) {
            ++of;
            at = 0;
        }
        if (of == pledges.end())
            return false;
        const auto& [day, amount] = of->instalments[at++];
        next << stored(of->day) << stored(day) << of->who->pers_no << amount;
        return true;
    });
}

} // namespace orvo::demo
