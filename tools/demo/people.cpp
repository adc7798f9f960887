#include "demo/people.h"

#include "base/resident_number.h"
#include "demo/names.h"

#include <algorithm>
#include <unordered_set>

namespace orvo::demo {

namespace {

constexpr int oldest = 1940;
constexpr int youngest = 2003;
constexpr int age_of_students = 20;
constexpr int age_of_graduates = 23;

struct birth {
    std::string pers_no;
    int year;
    bool is_male;
};

/// Most members are in their middle years, fewer are old or have just begun.
int birth_year(random_stream& random, int last)
{
    const int one = random.between(oldest + 5, last);
    const int other = random.between(oldest, last);
    return random.chance(500) ? std::max(one, other) : one;
}

birth draw_birth(random_stream& random, int year)
{
    birth made{{}, year, random.chance(40)};
    const int month = random.between(1, 12);
    const int day = random.between(1, QDate{year, month, 1}.daysInMonth());
    const int century = (year < 2000 ? 1 : 3) + (made.is_male ? 0 : 1);
    const int place = random.below(96);
    const int serial = random.below(1000);
    const auto two_digits = [&made](int number) {
        made.pers_no += static_cast<char>('0' + number / 10);
        made.pers_no += static_cast<char>('0' + number % 10);
    };
    two_digits(year % 100);
    two_digits(month);
    two_digits(day);
    made.pers_no += static_cast<char>('0' + century);
    two_digits(place);
    two_digits(serial / 10);
    made.pers_no += static_cast<char>('0' + serial % 10);
    made.pers_no += resident_check_digit(made.pers_no);
    return made;
}

std::vector<birth> draw_births(const plan& what)
{
    random_stream random{what.seed, "births"};
    const int last = std::clamp(what.today.year() - age_of_students, oldest + 10, youngest);
    std::vector<birth> all;
    std::unordered_set<std::string> taken;
    while (static_cast<int>(all.size()) < what.members) {
        // The first is born in 2000, so that a number begins with 00 however long ago today is.
        const bool begins_with_zeros = all.empty() && what.members >= members_with_edges;
        birth one = draw_birth(random, begins_with_zeros ? 2000 : birth_year(random, last));
        if (taken.insert(one.pers_no).second)
            all.push_back(std::move(one));
    }
    std::ranges::sort(all, {}, &birth::pers_no);
    return all;
}

int lifetime_kind(random_stream& random, bool professor)
{
    if (professor)
        return 12;
    return random.chance(20) ? 13 : random.chance(550) ? 10 : 11;
}

int yearly_kind(random_stream& random, const person& one, int this_year)
{
    if (one.works_at && one.works_at->is_professors())
        return random.chance(250) ? 1 : 8;
    if (this_year - one.birth_year < age_of_graduates && !one.works_at)
        return 7;
    if (random.chance(6))
        return 9;
    if (random.chance(15))
        return 0;
    if (!one.works_at)
        return random.chance(80) ? 6 : 5;
    if (one.joined == this_year)
        return 3;
    if (random.chance(40))
        return 4;
    return one.works_at->is_catering() ? 1 : 2;
}

void place_at_work(person& one, random_stream& random, int this_year)
{
    const auto shape = one.shape ? one.shape->works : edge::workplaces::any;
    const bool is_student = this_year - one.birth_year < age_of_graduates && random.chance(700);
    const bool must_work = shape == edge::workplaces::alike || shape == edge::workplaces::punctuated;
    if (shape == edge::workplaces::none || (!must_work && (is_student || random.chance(90))))
        return;
    static const std::vector<int> weights = [] {
        std::vector<int> all;
        for (const workplace_class& each : workplace_classes())
            all.push_back(each.weight);
        return all;
    }();
    one.works_at = &workplace_classes()[random.weighted(weights)];
    one.workplaces = must_work ? 2 : 1;
    const int age = this_year - one.birth_year;
    while (one.workplaces < 4 && random.chance(age < 30 ? 150 : 350))
        ++one.workplaces;
}

void place_in_branch(person& one, random_stream& random)
{
    static const std::vector<int> weights = [] {
        std::vector<int> all;
        for (const branch& each : branches())
            all.push_back(each.weight);
        return all;
    }();
    one.branch = branches()[random.weighted(weights)].code;
    if (one.shape && one.shape->branch)
        one.branch = *one.shape->branch;
    one.division = one.works_at ? one.works_at->division : 0;
    const int sections = section_count(one.branch, one.division);
    one.section = sections == 0 ? 0 : random.between(1, sections);
}

void join(person& one, random_stream& random, int this_year)
{
    const int earliest = std::min(one.birth_year + age_of_students, this_year);
    const int drawn = random.between(earliest, this_year);
    one.joined = std::max(earliest, drawn - random.below(6));
    const bool can_be_lifetime = this_year - one.joined >= 3 && this_year - one.birth_year >= 35;
    if (can_be_lifetime && random.chance(130)) {
        one.lifetime = random.between(std::max(one.joined + 1, this_year - 12), this_year);
        one.kind = lifetime_kind(random, one.works_at && one.works_at->is_professors());
    } else {
        one.kind = yearly_kind(random, one, this_year);
    }
}

} // namespace

std::vector<person> make_people(const plan& what)
{
    const int this_year = what.today.year();
    std::vector<person> all;
    all.reserve(static_cast<std::size_t>(what.members));
    for (birth& each : draw_births(what)) {
        person one;
        one.number = static_cast<int>(all.size());
        random_stream random{what.seed, "people", static_cast<std::uint64_t>(one.number)};
        one.pers_no = std::move(each.pers_no);
        one.is_male = each.is_male;
        one.birth_year = each.year;
        one.name = person_name(random, one.is_male, one.birth_year);
        all.push_back(std::move(one));
    }
    if (what.members >= members_with_edges)
        for (std::size_t i = 0; i < edges().size(); ++i)
            all[(2 * i + 1) * all.size() / (2 * edges().size())].shape = &edges()[i];
    for (person& one : all) {
        random_stream random{what.seed, "careers", static_cast<std::uint64_t>(one.number)};
        if (one.shape && one.shape->name)
            one.name = *one.shape->name;
        place_at_work(one, random, this_year);
        place_in_branch(one, random);
        join(one, random, this_year);
    }
    return all;
}

} // namespace orvo::demo
