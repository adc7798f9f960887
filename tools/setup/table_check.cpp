#include "setup/table_check.h"

#include "db/hindrance.h"
#include "db/schema/schema.h"

#include <QByteArrayView>

#include <algorithm>

namespace orvo::setup {

namespace {

bool has_column(const rows& found, std::string_view name)
{
    return std::ranges::any_of(found.columns(), [name](const std::string& each) {
        return QByteArrayView{each}.compare(QByteArrayView{name}, Qt::CaseInsensitive) == 0;
    });
}

/// Runs a statement that meets no row; what the engine has against it is a fault.
void try_out(connection& on, const std::string& text, const std::string& fault,
             std::vector<std::string>& faults)
{
    try {
        on.direct(text);
    } catch (const db_failure& failure) {
        faults.push_back(fault + ": " + failure.text().toStdString());
    }
}

void check_table(connection& on, const table& wanted, database where, std::vector<std::string>& faults)
{
    const std::string name{wanted.name};
    const std::string nothing = name + " where 1=0";
    rows found;
    try {
        found = on.read("select * from " + nothing);
    } catch (const db_failure& failure) {
        // The catalogue does not tell a table that the login may not read from one that is missing.
        const hindrance why = hindrance_of(on.kind(), failure);
        const std::string words = ": " + failure.text().toStdString();
        faults.push_back(why == hindrance::no_table   ? "the table " + name + " is missing"
                         : why == hindrance::no_right ? "the login may not read the table " + name + words
                                                      : "the table " + name + " cannot be read" + words);
        return;
    }
    std::string field; // one that can be written
    for (const column& each : wanted.columns) {
        const std::string column_name{each.name};
        if (!has_column(found, each.name))
            faults.push_back("the column " + column_name + " of " + name + " is missing");
        else if (each.type != column_type::identity)
            field = column_name;
    }
    if (field.empty())
        return;
    try_out(on, "insert into " + name + "(" + field + ") select " + field + " from " + nothing,
            "nothing can be added to the table " + name, faults);
    if (where == database::mail) // what is queued is changed by nobody but who sends it
        return;
    try_out(on, "update " + name + " set " + field + "=" + field + " where 1=0",
            "the table " + name + " cannot be changed", faults);
    try_out(on, "delete from " + nothing, "nothing can be deleted from the table " + name, faults);
}

} // namespace

std::vector<std::string> faults_of(connection& on, database where)
{
    std::vector<std::string> faults;
    for (const table& each : tables_of(where))
        check_table(on, each, where, faults);
    return faults;
}

} // namespace orvo::setup
