#include "client/code_mirror.h"

#include "db/connection.h"
#include "db/schema/schema.h"
#include "db/wide_statement.h"

namespace orvo {

namespace {

std::vector<column_value> columns_of(const table& mirrored)
{
    std::vector<column_value> columns;
    for (const column& each : mirrored.columns)
        columns.push_back({each.name, {}});
    return columns;
}

/// Writes each row of a server table into the emptied local table of the same columns.
class mirror_sink : public row_sink {
public:
    mirror_sink(connection& local, const table& mirrored)
        : local_{local}, mirrored_{mirrored}, insert_{local.repeat(
                                                  insert_text(mirrored.name, columns_of(mirrored)))}
    {
    }

    void begin(const column_names&) override { local_.write("delete from " + std::string{mirrored_.name}); }
    bool take(std::span<const cell> row) override
    {
        insert_(row);
        return true;
    }

private:
    connection& local_;
    const table& mirrored_;
    repeated_write insert_;
};

std::string select_text(const table& mirrored)
{
    std::string names;
    for (const column& each : mirrored.columns)
        names.append(names.empty() ? "" : ",").append(each.name);
    return "select " + names + " from " + std::string{mirrored.name};
}

void copy_table(connection& server, connection& local, std::string_view name)
{
    const table& mirrored = *find_table(database::local, name);
    mirror_sink sink{local, mirrored};
    server.read_each(select_text(mirrored), {}, sink);
}

} // namespace

void sync_codes(connection& server, connection& local)
{
    transaction all_or_nothing{local};
    for (std::string_view name : mirrored_tables())
        copy_table(server, local, name);
    all_or_nothing.commit();
}

void sync_code_table(connection& server, connection& local, std::string_view name)
{
    transaction all_or_nothing{local};
    copy_table(server, local, name);
    all_or_nothing.commit();
}

} // namespace orvo
