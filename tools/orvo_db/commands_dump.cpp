#include "db/schema/schema.h"
#include "orvo_db/command.h"

namespace orvo::tool {

namespace {

const QString with_local = QStringLiteral("local");

void describe(QCommandLineParser& line)
{
    line.addOption({with_local, QStringLiteral("The workstation's file too.")});
}

/// Tabs part the columns and line ends the rows, so neither may stand in a text.
void append_escaped(std::string& to, std::string_view text)
{
    for (const char letter : text) {
        switch (letter) {
        case '\t':
            to += "\\t";
            break;
        case '\n':
            to += "\\n";
            break;
        case '\r':
            to += "\\r";
            break;
        case '\\':
            to += "\\\\";
            break;
        default:
            to += letter;
        }
    }
}

class dump_sink : public row_sink {
public:
    void begin(const column_names&) override {}
    bool take(std::span<const cell> fields) override
    {
        line_.clear();
        for (const cell& field : fields) {
            if (&field != fields.data())
                line_ += '\t';
            if (field.is == cell::kind::null)
                line_ += "\\N";
            else if (field.is == cell::kind::number)
                line_ += std::to_string(field.number);
            else
                append_escaped(line_, field.text);
        }
        line_ += '\n';
        print(line_);
        return true;
    }

private:
    std::string line_;
};

std::string listed(const std::vector<std::string_view>& names, char between)
{
    std::string text;
    for (const std::string_view name : names)
        text.append(text.empty() ? 0 : 1, between).append(name);
    return text;
}

void dump_table(connection& from, const char* prefix, const table& one)
{
    std::vector<std::string_view> names;
    for (const column& each : one.columns)
        names.push_back(each.name);
    print("[" + std::string{prefix} + "." + std::string{one.name} + "]\t" + listed(names, '\t') + "\n");
    // Rows that are alike in their key, or have none, are told apart by all they hold.
    const std::string order = listed(one.key.empty() || one.doubles ? names : one.key, ',');
    dump_sink sink;
    from.read_each("select " + listed(names, ',') + " from " + std::string{one.name} + " order by " + order,
                   {}, sink);
}

void dump(const context& in, database which, const char* prefix)
{
    connection from = in.open(which);
    for (const table& one : tables_of(which))
        dump_table(from, prefix, one);
}

void run(const QCommandLineParser& line, const context& in)
{
    expect_arguments(line, 0);
    dump(in, database::server, "server");
    dump(in, database::mail, "mail");
    if (line.isSet(with_local))
        dump(in, database::local, "local");
}

} // namespace

const command dump_command{"dump", "Write all tables as text to standard output.", describe, run};

} // namespace orvo::tool
