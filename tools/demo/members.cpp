#include "demo/addresses.h"
#include "demo/days.h"
#include "demo/fillers.h"
#include "demo/names.h"

#include <array>

namespace orvo::demo {

namespace {

std::string licence_number(random_stream& random, const person& one)
{
    // Numbers have been given out in the order of the years.
    const int number = (one.joined - 1960) * 2400 + random.below(2400);
    return one.kind == 7 ? std::string{} : std::to_string(std::max(number, 1));
}

std::string career(random_stream& random, const person& one, int this_year)
{
    if (!one.works_at || random.chance(150))
        return {};
    const int years = std::min(this_year - one.joined, 50);
    const int months = random.below(12);
    std::string text;
    if (years > 0)
        text += static_cast<char>('0' + years / 10), text += static_cast<char>('0' + years % 10);
    if (months > 0 || years == 0)
        text += static_cast<char>('0' + months / 10), text += static_cast<char>('0' + months % 10);
    return text;
}

std::string mail_address(random_stream& random, const person& one)
{
    static constexpr std::array hosts = std::to_array<std::string_view>(
        {"mail.example", "post.example", "school.example", "hospital.example"});
    if (random.chance(180))
        return {};
    std::string text = login_of(random, one.number + 1) + "@";
    text += random.pick(hosts);
    return text;
}

std::string_view mail_place(random_stream& random, const person& one)
{
    const int drawn = random.below(1000);
    if (drawn < 25)
        return "발송중지";
    return one.works_at && drawn < 400 ? "직장" : "자택";
}

std::string_view form_of_address(random_stream& random, const person& one)
{
    static constexpr std::array usual =
        std::to_array<std::string_view>({"영양사님", "영양사님", "영양사님", "영양사 선생님", "님 귀하"});
    if (one.works_at && one.works_at->is_professors())
        return "교수님";
    return random.pick(usual);
}

std::string_view yes(random_stream& random, int per_mille)
{
    return random.chance(per_mille) ? "1" : "0";
}

int tens(random_stream& random, int count)
{
    return 10 * random.between(1, count);
}

void write_member(row& next, const plan& what, const person& one)
{
    const int this_year = what.today.year();
    random_stream random{what.seed, "members", static_cast<std::uint64_t>(one.number)};
    const edge none;
    const edge& shape = one.shape ? *one.shape : none;

    const std::string licence = licence_number(random, one);
    const int religion = tens(random, 6);
    const bool is_married = this_year - one.birth_year > 27 && random.chance(750);
    const address home = home_address(random, one.branch);
    const std::string tel = random.chance(20) ? std::string{} : line_number(random, home.area);
    const std::string mobile = random.chance(60) ? std::string{} : mobile_number(random);
    const std::string email = mail_address(random, one);
    const int degree = one.works_at && one.works_at->is_professors() ? 4 : random.between(1, 3);
    const int school = tens(random, schools());
    const std::string years = career(random, one, this_year);
    const std::string_view called = form_of_address(random, one);
    const std::string_view place = mail_place(random, one);
    const int pay = one.works_at && random.chance(600) ? random.between(180, 600) * 10 : 0;
    const QDate changed = day_between(random, QDate{one.joined, 1, 2}, what.today);

    next << one.pers_no << licence << one.name << (one.is_male ? "1" : "0") << religion
         << (is_married ? "기혼" : "미혼") << home.post << home.text << shape.tel.value_or(tel)
         << shape.mobile.value_or(mobile) << shape.email.value_or(email) << one.branch << one.division
         << one.section << 10 * std::min(degree + 1, 4) << 10 * degree << school << years << called
         << shape.mail_place.value_or(place) << pay << one.kind << "" << stored(changed) << "";
    for (const int per_mille : {20, 30, 15, 250, 60})
        next << yes(random, per_mille);
    for (const int per_mille : {70, 90}) {
        const bool holds = random.chance(per_mille);
        next << (holds ? "1" : "0") << (holds ? std::to_string(random.between(1, 9000)) : std::string{});
    }
    const int allowance = random.chance(300) ? random.between(2, 10) * 10000 : 0;
    const int contractor = one.works_at && random.chance(120) ? random.between(1, contractors()) : 0;
    const int body = random.chance(300) ? tens(random, 6) : 0;
    next << allowance << contractor << body;
}

} // namespace

void fill_members(loader& into, const plan& what, const std::vector<person>& people)
{
    auto at = people.begin();
    into.fill("person_m_tbl", [&](row& next) {
        if (at == people.end())
            return false;
        write_member(next, what, *at++);
        return true;
    });
}

void fill_web_logins(loader& into, const plan& what, const std::vector<person>& people)
{
    auto at = people.begin();
    into.fill("id_tbl", [&](row& next) {
        for (; at != people.end(); ++at) {
            random_stream random{what.seed, "web logins", static_cast<std::uint64_t>(at->number)};
            // A member whom no operator has opened yet has no row, one who never logged in an empty one.
            const int drawn = random.below(1000);
            if (drawn < 80)
                continue;
            const std::string id = drawn < 300 ? std::string{} : login_of(random, at->number + 1);
            const std::string password =
                id.empty() ? std::string{} : "demo" + std::to_string(random.between(1000, 9999));
            next << at++->pers_no << id << password;
            return true;
        }
        return false;
    });
}

} // namespace orvo::demo
