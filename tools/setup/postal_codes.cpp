#include "setup/postal_codes.h"

#include "db/schema/schema.h"
#include "setup/refusal.h"

#include <algorithm>
#include <array>

namespace orvo::setup {

namespace {

struct heading {
    std::u16string_view name; ///< lower case, letters alone
    std::string_view column;
};

constexpr std::array headings = std::to_array<heading>({
    {u"post", "post"},    {u"우편번호", "post"}, {u"zipcode", "post"}, {u"do", "do"},
    {u"시도", "do"},      {u"시도명", "do"},     {u"sido", "do"},      {u"gu", "gu"},
    {u"시군구", "gu"},    {u"시군구명", "gu"},   {u"gugun", "gu"},     {u"dong", "dong"},
    {u"읍면동", "dong"},  {u"읍면동명", "dong"}, {u"동", "dong"},      {u"li", "li"},
    {u"리", "li"},        {u"리명", "li"},       {u"ri", "li"},        {u"island", "island"},
    {u"도서", "island"},  {u"도서명", "island"}, {u"fir", "fir"},      {u"시작주번지", "fir"},
    {u"시작번지", "fir"}, {u"sec", "sec"},       {u"끝주번지", "sec"}, {u"끝번지", "sec"},
});

/// The column that a heading names, "읍/면/동" as well as "읍면동"; empty where it names none.
std::string_view column_of(const QString& text)
{
    QString letters;
    for (const QChar each : text)
        if (each.isLetter())
            letters += each.toLower();
    const auto found = std::ranges::find_if(headings, [&](const heading& each) {
        return letters == QStringView{each.name.data(), static_cast<qsizetype>(each.name.size())};
    });
    return found == headings.end() ? std::string_view{} : found->column;
}

/// What a reason quotes: short, and nothing that moves a terminal's cursor.
std::string quoted(const QString& text)
{
    constexpr qsizetype most = 20;
    QString shown = text.left(most);
    for (QChar& each : shown)
        if (!each.isPrint())
            each = u'?';
    return "\"" + (text.size() > most ? shown + QStringLiteral("...") : shown).toStdString() + "\"";
}

/// "135-080" and "135080" as six digits; empty where it is no postal code.
QString six_digits(QString text)
{
    if (text.size() == 7 && text[3] == u'-')
        text.remove(3, 1);
    const auto is_digit = [](QChar each) { return each >= u'0' && each <= u'9'; };
    return text.size() == 6 && std::ranges::all_of(text, is_digit) ? text : QString{};
}

/// The rows of a file that can be taken.
class postal_rows {
public:
    postal_rows(delimited_text& from, const rejection& tell)
        : from_{from}, tell_{tell}, columns_{find_table(database::local, "zip")->columns},
          places_(columns_.size(), none), row_(columns_.size())
    {
    }

    /// The fields are good until the next call. False at the end.
    bool next(std::vector<cell>& fields);
    const import_count& count() const { return count_; }

private:
    static constexpr qsizetype none = -1;

    delimited_text& from_;
    const rejection& tell_;
    const std::vector<column>& columns_;
    std::vector<qsizetype> places_; ///< for each column, its field; none where the file lacks it
    qsizetype width_ = 0;           ///< in fields; 0 until the first line was read
    std::vector<std::string> row_;
    import_count count_;

    bool read_headings();
    std::string take();
};

bool postal_rows::read_headings()
{
    const QStringList& names = from_.fields();
    int known = 0;
    for (qsizetype field = 0; field < names.size(); ++field)
        for (std::size_t i = 0; i < columns_.size(); ++i)
            if (places_[i] == none && columns_[i].name == column_of(names[field])) {
                places_[i] = field;
                ++known;
            }
    if (known < 2) { // one name alone may be a neighbourhood's
        for (std::size_t i = 0; i < places_.size(); ++i)
            places_[i] = static_cast<qsizetype>(i);
        width_ = static_cast<qsizetype>(columns_.size());
        return false;
    }
    for (std::size_t i = 0; i < columns_.size(); ++i)
        if (places_[i] == none && (columns_[i].name == "post" || columns_[i].name == "dong"))
            throw refusal{"the first line names columns, but none for " + std::string{columns_[i].name}};
    width_ = names.size();
    return true;
}

/// Fills the row; returns why it cannot be taken, or an empty text.
std::string postal_rows::take()
{
    const QStringList& fields = from_.fields();
    if (fields.size() != width_)
        return "has " + std::to_string(fields.size()) + " fields and not " + std::to_string(width_);
    for (std::size_t i = 0; i < columns_.size(); ++i) {
        const column& field = columns_[i];
        QString text = places_[i] == none ? QString{} : fields[places_[i]];
        if (field.name == "post") {
            const QString post = six_digits(text);
            if (post.isEmpty())
                return "post " + quoted(text) + " is not six digits";
            text = post;
        } else if (field.name == "dong" && text.isEmpty()) {
            return "dong is empty";
        } else if (text.size() > field.width) {
            return std::string{field.name} + " " + quoted(text) + " is longer than " +
                   std::to_string(field.width) + " characters";
        }
        row_[i] = text.toStdString();
    }
    return {};
}

bool postal_rows::next(std::vector<cell>& fields)
{
    while (from_.next()) {
        if (from_.fault().empty() && width_ == 0 && read_headings())
            continue;
        const std::string reason = from_.fault().empty() ? take() : from_.fault();
        if (reason.empty()) {
            ++count_.imported;
            for (const std::string& each : row_)
                fields.push_back(cell::of(each));
            return true;
        }
        ++count_.rejected;
        tell_(from_.line(), reason);
    }
    return false;
}

} // namespace

import_count import_postal_codes(connection& local, const QString& path, text_encoding encoding,
                                 const rejection& tell)
{
    delimited_text file{path, encoding};
    postal_rows rows{file, tell};
    std::vector<std::string_view> columns;
    for (const column& each : find_table(database::local, "zip")->columns)
        columns.push_back(each.name);

    transaction all_or_nothing{local};
    local.write("delete from zip");
    local.load("zip", columns, [&](std::vector<cell>& fields) { return rows.next(fields); });
    if (rows.count().imported > 0)
        all_or_nothing.commit();
    return rows.count();
}

} // namespace orvo::setup
