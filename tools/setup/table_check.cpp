#include "setup/table_check.h"

#include "setup/missing_tables.h"

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
        faults.push_back("the table " + name + " cannot be read: " + failure.text().toStdString());
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
    const std::vector<QString> standing = standing_tables(on);
    std::vector<std::string> faults;
    for (const table& each : tables_of(where)) {
        const QString name = QString::fromLatin1(each.name.data(), static_cast<qsizetype>(each.name.size()));
        if (std::ranges::find(standing, name) == standing.end())
            faults.push_back("the table " + name.toStdString() + " is missing");
        else
            check_table(on, each, where, faults);
    }
    return faults;
}

} // namespace orvo::setup
