#include "members/rules/member_pages.h"

#include <algorithm>

namespace orvo {

namespace {

class place_sink : public row_sink {
public:
    explicit place_sink(std::vector<qint64>& places) : places_{places} {}

    void begin(const column_names&) override { places_.clear(); }
    bool take(std::span<const cell> row) override
    {
        places_.push_back(row.front().number);
        return true;
    }

private:
    std::vector<qint64>& places_;
};

} // namespace

member_pages::member_pages(connection& local) : local_{&local}
{
    place_sink places{places_};
    local_->read_each("select rowid from person_m_tbl", {}, places);
}

int member_pages::page_count() const
{
    return (static_cast<int>(places_.size()) + page_size - 1) / page_size;
}

std::vector<listed_member> member_pages::page(int number) const
{
    std::vector<listed_member> members;
    if (number < 1 || number > page_count())
        return members;
    const std::size_t first = static_cast<std::size_t>(number - 1) * page_size;
    const std::size_t last = std::min(first + page_size, places_.size()) - 1;
    const rows found =
        local_->read("select pers_no,pers_name from person_m_tbl where rowid between {first} and {last}",
                     {{"first", places_[first]}, {"last", places_[last]}});
    for (const auto row : found)
        members.push_back({row.text("pers_no"), row.text("pers_name")});
    return members;
}

int member_pages::page_of(const QString& pers_no) const
{
    const qint64 place = local_->number(
        "select min(rowid) as place from person_m_tbl where pers_no='{pers_no}'", {{"pers_no", pers_no}});
    const auto found = std::lower_bound(places_.begin(), places_.end(), place);
    if (place == 0 || found == places_.end() || *found != place)
        return 0;
    return static_cast<int>(found - places_.begin()) / page_size + 1;
}

} // namespace orvo
