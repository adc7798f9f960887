#include "demo/addresses.h"
#include "demo/days.h"
#include "demo/fillers.h"
#include "demo/names.h"

#include <array>

namespace orvo::demo {

namespace {

/// What a member's workplaces have in common, and which of them is next.
struct employment {
    const person* who = nullptr;
    random_stream random;
    std::string name; ///< of the one before, for workplaces with like names
    QDate ends;       ///< when the next one back in time ended; invalid for the present one
    int written = 0;
};

std::string workplace_name(employment& job, const workplace_class& kind)
{
    const edge* shape = job.who->shape;
    const auto works = shape ? shape->works : edge::workplaces::any;
    if (works == edge::workplaces::alike)
        return job.written == 0 ? "나란한초등학교" : "나란한초등학교 병설유치원";
    if (works == edge::workplaces::punctuated)
        return job.written == 0 ? "참맛나라, 100% 우리콩(주)" : "참맛나라";
    std::string name{house_name(job.random)};
    name += kind.suffix;
    return name;
}

int meals(random_stream& random, int per_mille, int most)
{
    return random.chance(per_mille) ? random.between(1, most) : 0;
}

void write_meals(row& next, random_stream& random, const workplace_class& kind)
{
    if (!kind.is_catering()) {
        next << 0 << 0 << 0 << 0 << 1 << 0 << 0 << ""
             << "";
        return;
    }
    const int most = random.chance(150) ? 1800 : random.chance(500) ? 700 : 250;
    const bool is_school = kind.great == 20;
    const int morning = meals(random, is_school ? 60 : 450, most / 2);
    const int midday = meals(random, 970, most);
    const int evening = meals(random, is_school ? 150 : 600, most * 2 / 3);
    const int late = meals(random, kind.has_beds() ? 250 : 60, most / 8 + 1);
    const int all = morning + midday + evening + late;
    const int dietitians = 1 + all / 1200;
    const int cooks = 1 + all / 400;
    const int aides = 1 + all / 90;
    const int cost = random.between(18, 48) * 100;
    const std::string beds = kind.has_beds() ? std::to_string(random.between(3, 90) * 10) : std::string{};
    next << morning << midday << evening << late << dietitians << cooks << aides << std::to_string(cost)
         << beds;
}

void write_workplace(row& next, const plan& what, employment& job)
{
    static constexpr std::array departments = std::to_array<std::string_view>(
        {"영양팀", "급식과", "영양실", "총무부", "식품위생팀", "급식운영팀", "행정실"});
    random_stream& random = job.random;
    const person& who = *job.who;
    const bool is_present = job.written == 0;
    const workplace_class& kind = is_present ? *who.works_at : random.pick(workplace_classes());
    const QDate ended = is_present ? what.today : job.ends;
    const QDate began = day_between(random, ended.addYears(-9), ended.addMonths(-2));
    const std::string name = workplace_name(job, kind);
    const address stands = work_address(random, is_present || random.chance(700) ? who.branch : 10);
    const std::string tel = line_number(random, stands.area);
    const std::string fax = random.chance(700) ? line_number(random, stands.area) : std::string{};
    const int line = 10 * random.between(1, 7);
    const int level = kind.is_professors() ? 80 : 10 * random.between(1, 7);
    const int form = random.chance(250) ? 2 : random.chance(50) ? 3 : 1;

    next << who.pers_no << name << kind.part << kind.great << kind.small << stored_month(began)
         << random.pick(departments) << line << level << form << stands.post << stands.text << tel << fax;
    write_meals(next, random, kind);
    const bool has_other_post = random.chance(40);
    const std::string joint_management = random.chance(60) ? std::to_string(random.between(2, 5)) : "0";
    const std::string joint_cooking = random.chance(40) ? std::to_string(random.between(2, 5)) : "0";
    const bool has_hygiene_education = random.chance(400);
    const QDate entered = day_between(random, std::max(began, QDate{who.joined, 1, 2}), what.today);
    next << (has_other_post ? 1 : 0) << joint_management << joint_cooking << (has_hygiene_education ? 1 : 0)
         << stored(entered) << (is_present ? std::string{} : stored_month(ended)) << (is_present ? 1 : 0);
    job.ends = began.addDays(-random.below(300));
    ++job.written;
}

} // namespace

void fill_workplaces(loader& into, const plan& what, const std::vector<person>& people)
{
    const auto begin = [&](const person& who) {
        return employment{
            &who, random_stream{what.seed, "workplaces", static_cast<std::uint64_t>(who.number)}, {}, {}};
    };
    auto at = people.begin();
    employment job = begin(people.front());
    into.fill("company", [&](row& next) {
        while (at != people.end() && job.written == at->workplaces)
            if (++at != people.end())
                job = begin(*at);
        if (at == people.end())
            return false;
        write_workplace(next, what, job);
        return true;
    });
}

} // namespace orvo::demo
