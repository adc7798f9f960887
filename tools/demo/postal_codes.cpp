#include "demo/addresses.h"
#include "demo/codes.h"
#include "demo/demo.h"
#include "demo/loader.h"

#include <algorithm>
#include <array>
#include <set>
#include <sstream>

namespace orvo::demo {

namespace {

constexpr qint64 most_of_members = 500;
constexpr std::size_t all_rows = 600;

struct postal_code {
    std::string post;
    std::string province;
    std::string district;
    std::string neighbourhood;
    std::string village;
    std::string island;
    std::string first_lot;
    std::string last_lot;

    auto operator<=>(const postal_code&) const = default;
};

/// One code for each neighbourhood, and one neighbourhood for each code.
class code_list {
public:
    bool has_room() const { return rows_.size() < all_rows; }
    bool knows(const postal_code& one) const
    {
        return codes_.contains(one.post) || neighbourhoods_.contains(key_of(one));
    }
    void add(const postal_code& one)
    {
        codes_.insert(one.post);
        neighbourhoods_.insert(key_of(one));
        rows_.push_back(one);
    }
    std::vector<postal_code> in_order() &&
    {
        std::ranges::sort(rows_);
        return std::move(rows_);
    }

private:
    std::set<std::string> codes_;
    std::set<std::string> neighbourhoods_;
    std::vector<postal_code> rows_;

    static std::string key_of(const postal_code& one)
    {
        return one.province + " " + one.district + " " + one.neighbourhood;
    }
};

/// The codes of members' homes, so that an operator finds what the register holds.
class home_sink : public row_sink {
public:
    home_sink(code_list& codes, random_stream& random, qint64 step)
        : codes_{codes}, random_{random}, step_{step}
    {
    }

    void begin(const column_names&) override {}
    bool take(std::span<const cell> row) override
    {
        if (seen_++ % step_ != 0)
            return true;
        postal_code home;
        home.post = row[0].text;
        int lot = 0;
        std::istringstream address{std::string{row[1].text}};
        address >> home.province >> home.district >> home.neighbourhood >> lot;
        if (random_.chance(300)) {
            const int hundred = (lot - 1) / 100 * 100;
            home.first_lot = std::to_string(hundred + 1);
            home.last_lot = std::to_string(hundred + 100);
        }
        if (!codes_.knows(home))
            codes_.add(home);
        return true;
    }

private:
    code_list& codes_;
    random_stream& random_;
    qint64 step_;
    qint64 seen_ = 0;
};

void add_homes(code_list& codes, random_stream& random, connection& server)
{
    const qint64 members = server.number("select count(*) as cnt from person_m_tbl");
    home_sink sink{codes, random, members / most_of_members + (members % most_of_members != 0 ? 1 : 0)};
    server.read_each("select code_post,pers_add from person_m_tbl order by pers_no", {}, sink);
}

bool has_islands(std::string_view province)
{
    static constexpr std::array coasts =
        std::to_array<std::string_view>({"인천광역시", "전라남도", "경상남도", "제주도"});
    return std::ranges::find(coasts, province) != coasts.end();
}

void add_others(code_list& codes, random_stream& random)
{
    static constexpr std::array villages = std::to_array<std::string_view>(
        {"안골리", "뒷골리", "새말리", "아랫말리", "절골리", "양지리", "솔모루리", "물레리"});
    static constexpr std::array islands =
        std::to_array<std::string_view>({"솔도", "모래도", "달도", "갈매도"});
    while (codes.has_room()) {
        const neighbourhood where = any_neighbourhood(random, random.pick(branches()).code);
        postal_code one{where.post, std::string{where.province}, where.district, where.name, {}, {}, {}, {}};
        if (codes.knows(one))
            continue;
        const std::size_t from = static_cast<std::size_t>(random.below(villages.size()));
        const int rows = where.is_rural() ? random.between(1, 4) : 1;
        for (int i = 0; i < rows && codes.has_room(); ++i) {
            if (where.is_rural())
                one.village = villages[(from + static_cast<std::size_t>(i)) % villages.size()];
            one.island = has_islands(where.province) && random.chance(600) ? random.pick(islands) : "";
            codes.add(one);
        }
    }
}

} // namespace

void fill_postal_codes(connection& server, connection& local, const plan& what, const report& tell)
{
    if (local.number("select count(*) as cnt from zip") > 0)
        return;
    code_list codes;
    random_stream random{what.seed, "postal codes"};
    add_homes(codes, random, server);
    add_others(codes, random);
    const std::vector<postal_code> rows = std::move(codes).in_order();
    auto at = rows.begin();
    loader{local, tell, database::local}.fill("zip", [&](row& next) {
        if (at == rows.end())
            return false;
        next << at->post << at->province << at->district << at->neighbourhood << at->village << at->island
             << at->first_lot << at->last_lot;
        ++at;
        return true;
    });
}

} // namespace orvo::demo
