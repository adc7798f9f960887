#include "demo/days.h"
#include "demo/dues_record.h"
#include "demo/fillers.h"

#include <algorithm>

namespace orvo::demo {

namespace {

constexpr int years_kept = 6;

class bookkeeper {
public:
    bookkeeper(const plan& what, const person& who)
        : today_{what.today}, who_{who}, random_{what.seed, "dues", static_cast<std::uint64_t>(who.number)}
    {
        loyalty_ = random_.between(550, 990);
    }

    dues_record record()
    {
        for (const int year : yearly_years())
            add_year(year, kind_in(year));
        if (who_.lifetime)
            add_year(who_.lifetime, who_.kind);
        return std::move(made_);
    }

private:
    QDate today_;
    const person& who_;
    random_stream random_;
    int loyalty_;
    int newest_ = 0;
    dues_record made_;

    /// The years for which a member owes a year's dues. One of no kind owes nothing.
    std::vector<int> yearly_years()
    {
        const int this_year = today_.year();
        const int last = who_.lifetime ? who_.lifetime - 1 : this_year;
        std::vector<int> all;
        if (who_.kind != 0)
            for (int year = std::max(who_.joined, this_year - years_kept + 1); year <= last; ++year)
                if (year == who_.joined || random_.chance(850))
                    all.push_back(year);
        newest_ = all.empty() ? 0 : all.back();
        return all;
    }

    /// The kind of the newest year is the member's own. An earlier one is too, unless it is bound to a time
    /// of life.
    int kind_in(int year) const
    {
        if (year == newest_ && !who_.lifetime)
            return who_.kind;
        if (year == who_.joined)
            return year - who_.birth_year < 23 ? 7 : 3;
        if (who_.lifetime || who_.kind == 3)
            return who_.works_at && !who_.works_at->is_catering() ? 2 : 1;
        return who_.kind;
    }

    QDate last_day_of(int year) const { return std::min(QDate{year, 12, 31}, today_); }

    void add_year(int year, int kind)
    {
        const int dues = kind_of(kind).dues();
        const QDate entered = day_between(random_, QDate{year, 1, 2}, std::min(QDate{year, 4, 30}, today_));
        made_.years.push_back({kind, year, dues, 0, stored(entered)});
        const int share = year == today_.year() ? loyalty_ * 3 / 4 : loyalty_;
        const int drawn = random_.below(1000);
        if (kind_of(kind).is_lifetime())
            pay_for_life(entered, dues, drawn < 880);
        else if (drawn < share)
            pay_in_full(entered, dues);
        else if (drawn < share + 60)
            pay(entered, dues / 2 / 1000 * 1000);
        else if (drawn > 994)
            pay(entered, dues + 5000);
    }

    void pay_in_full(QDate from, int dues)
    {
        const member_kind& kind = kind_of(made_.years.back().kind);
        if (made_.years.back().year == who_.joined)
            pay_at_registration(from, dues);
        else if (random_.chance(180)) {
            pay_at(from, kind.center_money, true);
            pay_at(from, kind.bran_money, false);
        } else
            pay(from, dues);
    }

    void pay_for_life(QDate from, int dues, bool in_full)
    {
        const int parts = random_.between(1, 4);
        const int part = dues / parts / 10000 * 10000;
        for (int i = 1; i < parts; ++i)
            pay(from, part);
        if (in_full)
            pay(from, dues - part * (parts - 1));
    }

    void pay(QDate from, int amount) { pay_at(from, amount, random_.chance(450)); }

    void pay_at(QDate from, int amount, bool at_head_office)
    {
        const QDate day = day_between(random_, from, last_day_of(made_.years.back().year));
        const int place = at_head_office ? head_office_place : random_.pick(branch_places);
        add(day, at_head_office ? day : QDate{}, at_head_office ? QDate{} : day, amount, place);
    }

    /// The one form on which a payment bears both dates.
    void pay_at_registration(QDate day, int amount) { add(day, day, day, amount, head_office_place); }

    void add(QDate day, QDate center, QDate branch, int amount, int place)
    {
        yearly_dues& year = made_.years.back();
        year.paid += amount;
        const QDate entered = std::min(day.addDays(random_.below(5)), today_);
        made_.payments.push_back({year.kind,
                                  kind_of(year.kind).is_lifetime() ? "평생회원" : std::to_string(year.year),
                                  center.isValid() ? stored(center) : "",
                                  branch.isValid() ? stored(branch) : "", amount, place, stored(entered)});
    }
};

} // namespace

dues_record dues_of(const plan& what, const person& who)
{
    return bookkeeper{what, who}.record();
}

namespace {

/// Writes the entries of one list of each member's record.
template <typename Entry, typename Write>
void fill_entries(loader& into, std::string_view table, const plan& what, const std::vector<person>& people,
                  std::vector<Entry> dues_record::*list, const Write& write)
{
    auto who = people.begin();
    dues_record record = dues_of(what, people.front());
    std::size_t at = 0;
    into.fill(table, [&](row& next) {
        while (who != people.end() && at == (record.*list).size()) {
            at = 0;
            if (++who != people.end())
                record = dues_of(what, *who);
        }
        if (who == people.end())
            return false;
        write(next, *who, (record.*list)[at++]);
        return true;
    });
}

} // namespace

void fill_dues(loader& into, const plan& what, const std::vector<person>& people)
{
    fill_entries(into, "dues_h_tbl", what, people, &dues_record::years,
                 [](row& next, const person& who, const yearly_dues& each) {
                     const int yet = each.dues - each.paid;
                     next << who.pers_no << each.kind << std::to_string(each.year) << each.dues << yet
                          << (yet <= 0 ? "1" : "0") << each.entered;
                 });
}

void fill_payments(loader& into, const plan& what, const std::vector<person>& people)
{
    fill_entries(into, "dues_b_tbl", what, people, &dues_record::payments,
                 [](row& next, const person& who, const payment& each) {
                     next << who.pers_no << each.kind << each.year << each.center_day << each.branch_day
                          << each.amount << each.place << each.entered;
                 });
}

} // namespace orvo::demo
