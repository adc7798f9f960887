#include "client/salvage.h"

#include "client/local_file.h"
#include "db/schema/ddl.h"
#include "db/wide_statement.h"

#include <algorithm>
#include <optional>

namespace orvo {

namespace {

/// No table of a workstation has as many rows: what lies further on is no hole any more.
constexpr qint64 widest_hole = qint64{1} << 32;

class salvage_sink : public row_sink {
public:
    salvage_sink(connection& to, const table& which) : to_{to}, which_{which} {}

    qint64 taken = 0;   ///< rows that the other table has
    qint64 refused = 0; ///< rows that it does not take
    qint64 last_place = 0;

    void begin(const column_names& names) override
    {
        if (insert_)
            return;
        std::vector<column_value> columns;
        for (std::size_t at = 0; at < names.size(); ++at)
            if (const column* found = which_.find(names[at])) {
                places_.push_back(at);
                columns.push_back({found->name, {}});
            }
        insert_.emplace(to_.repeat(insert_text(which_.name, columns)));
    }

    bool take(std::span<const cell> row) override
    {
        if (row.front().is == cell::kind::number)
            last_place = row.front().number;
        fields_.clear();
        for (const std::size_t at : places_)
            fields_.push_back(row[at]);
        try {
            (*insert_)(fields_);
            ++taken;
        } catch (const db_failure& failure) {
            if (failure.kind() == failure_kind::disk_full)
                throw;
            ++refused;
        }
        return true;
    }

private:
    connection& to_;
    const table& which_;
    std::vector<std::size_t> places_;
    std::vector<cell> fields_;
    std::optional<repeated_write> insert_;
};

/// Whether the statement came to its end.
bool reads_on(connection& from, const std::string& text, const values& given, salvage_sink& sink)
{
    try {
        if (!from.is_up()) // a part of the disk that cannot be read closes the file
            from.reopen();
        from.read_each(text, given, sink);
        return true;
    } catch (const db_failure& failure) {
        if (failure.kind() == failure_kind::disk_full || is_held_elsewhere(failure))
            throw;
        return false;
    }
}

/// Steps over a hole by strides that grow with it: few tries, and little is lost behind its end.
bool read_by_places(connection& from, const table& which, salvage_sink& sink)
{
    const std::string text =
        "select rowid as place,* from " + std::string{which.name} + " where rowid>{above} order by rowid asc";
    bool is_whole = true;
    qint64 hole = 0;
    while (hole < widest_hole) {
        const qint64 above = sink.last_place;
        if (reads_on(from, text, {{"above", above + hole}}, sink))
            return is_whole;
        is_whole = false;
        hole = sink.last_place == above ? hole + std::max(qint64{1}, hole / 8) : 1;
    }
    return is_whole;
}

/// A table that lies in the order of its key has no places: it is read from both ends.
bool read_by_key(connection& from, const table& which, salvage_sink& sink)
{
    const std::string text = "select 'by key' as place,* from " + std::string{which.name} + " order by " +
                             std::string{which.key.front()};
    if (reads_on(from, text + " asc", {}, sink))
        return true;
    reads_on(from, text + " desc", {}, sink);
    return false;
}

} // namespace

salvaged salvage(connection& from, connection& to, const table& which)
{
    salvage_sink sink{to, which};
    const bool is_read_whole =
        is_clustered(which) ? read_by_key(from, which, sink) : read_by_places(from, which, sink);
    return {sink.taken, is_read_whole && sink.refused == 0};
}

} // namespace orvo
