#include "setup/data_check.h"

#include "db/hindrance.h"
#include "db/row_key.h"

#include <algorithm>
#include <array>
#include <functional>
#include <map>
#include <set>

namespace orvo::setup {

namespace {

constexpr std::size_t told_by_number = 3;

/// Some examples, behind their count.
class examples {
public:
    void add(const std::string& one, qint64 count = 1)
    {
        count_ += count;
        if (first_.size() < told_by_number)
            first_.push_back(one);
    }
    qint64 count() const { return count_; }
    std::string text() const
    {
        std::string all;
        for (const std::string& each : first_)
            all += (all.empty() ? ": " : ", ") + each;
        return all;
    }

private:
    qint64 count_ = 0;
    std::vector<std::string> first_;
};

/// Hands each row on as texts.
class text_rows : public row_sink {
public:
    explicit text_rows(std::function<void(const std::vector<std::string>&)> take) : take_{std::move(take)} {}
    void begin(const column_names&) override {}
    bool take(std::span<const cell> row) override
    {
        std::vector<std::string> texts;
        for (const cell& each : row)
            texts.push_back(each.is == cell::kind::number ? std::to_string(each.number)
                                                          : std::string{without_padding(each.text)});
        take_(texts);
        return true;
    }

private:
    std::function<void(const std::vector<std::string>&)> take_;
};

void each_row(connection& on, const std::string& text,
              const std::function<void(const std::vector<std::string>&)>& take)
{
    text_rows sink{take};
    on.read_each(text, {}, sink);
}

/// Why rows can lie under a number that no member has.
enum class left_by { broken_save, change_of_number, deletion };

struct table_of_members {
    const char* name;
    left_by whom;
};

/// A change of number leaves some behind, a deletion the pledges: as in use. From the others only a save that
/// broke, or another program, takes the member away.
constexpr std::array tables_of_members{table_of_members{"dues_h_tbl", left_by::broken_save},
                                       table_of_members{"dues_b_tbl", left_by::broken_save},
                                       table_of_members{"company", left_by::broken_save},
                                       table_of_members{"id_tbl", left_by::change_of_number},
                                       table_of_members{"std_h_tbl", left_by::change_of_number},
                                       table_of_members{"std_b_tbl", left_by::change_of_number},
                                       table_of_members{"supplement", left_by::change_of_number},
                                       table_of_members{"have_lic_tbl", left_by::change_of_number},
                                       table_of_members{"contract", left_by::deletion},
                                       table_of_members{"contract_list", left_by::deletion}};

/// The rows of one number, by table in their order.
using stray_rows = std::array<qint64, tables_of_members.size()>;

std::map<std::string, stray_rows> read_strays(connection& on)
{
    std::map<std::string, stray_rows> strays;
    for (std::size_t i = 0; i < tables_of_members.size(); ++i)
        each_row(on,
                 "select a.pers_no as pers_no,count(*) as n from " + std::string{tables_of_members[i].name} +
                     " a where not exists (select 1 from person_m_tbl b where b.pers_no=a.pers_no) "
                     "group by a.pers_no",
                 [&](const std::vector<std::string>& row) { strays[row[0]][i] += std::stoll(row[1]); });
    return strays;
}

/// Where a save broke amid a member's tables, all of his rows are its remains.
bool is_of_a_broken_save(const stray_rows& rows)
{
    for (std::size_t i = 0; i < rows.size(); ++i)
        if (rows[i] > 0 && tables_of_members[i].whom == left_by::broken_save)
            return true;
    return false;
}

void tell_strays(connection& on, std::vector<std::string>& findings)
{
    static constexpr std::array told{
        std::pair{left_by::broken_save,
                  "rows of numbers that no member has, as a save leaves them that broke"},
        std::pair{left_by::change_of_number, "rows that a change of number left behind, as in use"},
        std::pair{left_by::deletion, "pledges that a deletion left, as in use"}};
    const std::map<std::string, stray_rows> strays = read_strays(on);
    for (const auto& [whom, sentence] : told) {
        stray_rows rows{};
        examples numbers;
        for (const auto& [pers_no, its_rows] : strays) {
            const bool is_broken = is_of_a_broken_save(its_rows);
            bool is_told = false;
            for (std::size_t i = 0; i < rows.size(); ++i)
                if (its_rows[i] > 0 &&
                    whom == (is_broken ? left_by::broken_save : tables_of_members[i].whom)) {
                    rows[i] += its_rows[i];
                    is_told = true;
                }
            if (is_told)
                numbers.add(hidden_number(pers_no));
        }
        if (numbers.count() == 0)
            continue;
        std::string counts;
        for (std::size_t i = 0; i < rows.size(); ++i)
            if (rows[i] > 0)
                counts += (counts.empty() ? "" : ", ") + std::string{tables_of_members[i].name} + " " +
                          std::to_string(rows[i]);
        findings.push_back(std::string{sentence} + ": " + counts + "; " + std::to_string(numbers.count()) +
                           (numbers.count() == 1 ? " number" : " numbers") + numbers.text());
    }
}

/// Adds a sentence where a text finds rows. Their fields stand in the examples, the number of the member
/// hidden.
void tell_rows(connection& on, const std::string& text, const std::string& sentence,
               std::vector<std::string>& findings)
{
    examples found;
    each_row(on, text, [&](const std::vector<std::string>& row) {
        found.add(hidden_number(row[0]) + (row.size() > 1 ? " " + row[1] : std::string{}));
    });
    if (found.count() > 0)
        findings.push_back(sentence + ": " + std::to_string(found.count()) + found.text());
}

void tell_dues(connection& on, std::vector<std::string>& findings)
{
    tell_rows(on,
              "select a.pers_no as pers_no from person_m_tbl a where "
              "not exists (select 1 from dues_h_tbl b where b.pers_no=a.pers_no) and "
              "not exists (select 1 from dues_b_tbl c where c.pers_no=a.pers_no)",
              "members without any dues", findings);
    // What a member of a lifetime kind pays when he is registered counts for that year too, until the year is
    // settled for another payment.
    tell_rows(on,
              "select a.pers_no as pers_no,a.val_year as val_year from dues_h_tbl a "
              "left join (select pers_no,val_year,sum(pres_money) as paid from dues_b_tbl group by "
              "pers_no,val_year) b "
              "on a.pers_no=b.pers_no and a.val_year=b.val_year "
              "left join (select pers_no,sum(pres_money) as paid from dues_b_tbl where val_year='평생회원' "
              "group by pers_no) c on a.pers_no=c.pers_no "
              "where abs(a.yet_money-a.mem_dues+coalesce(b.paid,0))>=1 and (a.code_member<10 or "
              "a.code_member>13 or abs(a.yet_money-a.mem_dues+coalesce(c.paid,0))>=1)",
              "years that are not settled, as what is open is not the dues less the payments", findings);
    tell_rows(
        on,
        "select pers_no,val_year from dues_h_tbl where (incom_flag='1' and yet_money>0) or "
        "(incom_flag='0' and yet_money<=0)",
        "years whose mark of payment is not that of their amount, as a change of the year leaves it in use",
        findings);
}

/// The rows of one code table that the workstations leave out.
void tell_codes(connection& on, const table& codes, std::vector<std::string>& findings)
{
    std::map<std::vector<std::string>, int> seen;
    qint64 without_code = 0;
    class counting_sink : public row_sink {
    public:
        counting_sink(const table& of, std::map<std::vector<std::string>, int>& to, qint64& without)
            : of_{of}, to_{to}, without_{without}
        {
        }
        void begin(const column_names&) override {}
        bool take(std::span<const cell> row) override
        {
            if (const auto code = code_of(of_, row))
                ++to_[*code];
            else
                ++without_;
            return true;
        }

    private:
        const table& of_;
        std::map<std::vector<std::string>, int>& to_;
        qint64& without_;
    } sink{codes, seen, without_code};
    const std::string name{codes.name};
    on.read_each(codes_text(codes), {}, sink);
    for (const auto& [code, times] : seen) {
        if (times == 1)
            continue;
        std::string text;
        for (const std::string& each : code)
            text += (text.empty() ? "" : "/") + each;
        findings.push_back("the code " + text + " of " + name + " stands there " + std::to_string(times) +
                           " times: workstations take the first row");
    }
    if (without_code > 0)
        findings.push_back(name + " has " + std::to_string(without_code) +
                           (without_code == 1 ? " row" : " rows") +
                           " without a code, which no workstation takes");
}

} // namespace

std::string hidden_number(std::string_view pers_no)
{
    return std::string{pers_no.substr(0, 6)} + "-*******";
}

std::vector<std::string> findings_in(connection& on)
{
    std::vector<std::string> findings;
    const auto look = [&](const std::string& what, const std::function<void()>& act) {
        try {
            act();
        } catch (const db_failure& failure) {
            // A missing table or right is told as a fault.
            if (hindrance_of(on.kind(), failure) == hindrance::other)
                findings.push_back(what + " could not be looked through: " + failure.text().toStdString());
        }
    };
    look("the rows of members", [&] { tell_strays(on, findings); });
    look("the dues", [&] { tell_dues(on, findings); });
    for (const std::string_view each : mirrored_tables())
        look(std::string{each}, [&] { tell_codes(on, *find_table(database::server, each), findings); });
    return findings;
}

} // namespace orvo::setup
