#include "orvo_db/command.h"
#include "setup/postal_codes.h"

namespace orvo::tool {

namespace {

const QString encoding = QStringLiteral("encoding");

constexpr qint64 rejections_in_full = 20;

void describe(QCommandLineParser& line)
{
    line.addPositionalArgument(
        QStringLiteral("file"),
        QStringLiteral("One postal code a line: post, do, gu, dong, li, island, fir, sec, with a tab, comma, "
                       "semicolon or | between them; or other columns, named in the first line."));
    line.addOption({encoding, QStringLiteral("utf-8 or cp949; by default what the file seems to be."),
                    QStringLiteral("name")});
}

setup::text_encoding encoding_of(const QCommandLineParser& line)
{
    if (!line.isSet(encoding))
        return setup::text_encoding::recognised;
    const QString name = line.value(encoding).toLower();
    if (name == QLatin1String("utf-8"))
        return setup::text_encoding::utf8;
    if (name == QLatin1String("cp949"))
        return setup::text_encoding::cp949;
    throw usage_error{"--encoding wants utf-8 or cp949"};
}

void run(const QCommandLineParser& line, const context& in)
{
    expect_arguments(line, 1);
    const QStringList given = line.positionalArguments();
    if (given.isEmpty())
        throw usage_error{"import-zip wants a file"};
    const setup::text_encoding chosen = encoding_of(line);
    connection local = in.open(database::local);
    qint64 told = 0;
    const setup::import_count count = setup::import_postal_codes(
        local, given.first(), chosen, [&](qint64 number, const std::string& reason) {
            if (told++ < rejections_in_full)
                note("line " + std::to_string(number) + ": " + reason);
        });
    if (told > rejections_in_full)
        note("and " + std::to_string(told - rejections_in_full) + " more rows rejected");
    const std::string counts =
        std::to_string(count.imported) + " rows imported, " + std::to_string(count.rejected) + " rejected";
    if (count.imported == 0)
        throw tool_failure{counts + "; the postal codes stay as they are"};
    print(counts + "\n");
}

} // namespace

const command import_zip_command{"import-zip", "Put a file's postal codes in place of this workstation's.",
                                 describe, run};

} // namespace orvo::tool
