#include "base/typed.h"

#include <QRegularExpression>

#include <algorithm>

namespace orvo {

namespace {

/// Full-width signs as their half-width ones, and nothing around them.
QString half_width(QStringView typed)
{
    QString text = typed.toString();
    for (QChar& c : text) {
        if (c >= u'！' && c <= u'～')
            c = QChar{c.unicode() - u'！' + u'!'};
        else if (c == u'￦')
            c = u'₩';
        else if (c == u'−')
            c = u'-';
        else if (c.isSpace())
            c = u' ';
    }
    return text.trimmed();
}

constexpr qint64 largest_amount = 2'147'483'647; // of a column of 32 bits

/// What is said of a number of some kind that cannot be taken.
struct refusals {
    const char* not_a_number;
    const char* minus;
    const char* point;
    const char* comma;
    const char* too_large;
    const char* unclear; ///< behind a unit
};

constexpr refusals of_won{"금액은 30,000이나 3만처럼 숫자로 입력하세요.",
                          "금액에는 빼기 기호(-)를 쓸 수 없으니 0원 이상으로 입력하세요.",
                          "금액에는 점(.)을 쓸 수 없으니 30,000처럼 원 단위로 입력하세요.",
                          "쉼표의 자리가 맞지 않으니 30,000처럼 세 자리마다 찍어 입력하세요.",
                          "금액은 2,147,483,647원까지 입력할 수 있습니다.",
                          "'%1' 다음의 금액이 분명하지 않으니 35,000이나 3만5천처럼 입력하세요."};
constexpr refusals of_signed_won{
    of_won.not_a_number, "빼기 기호(-)는 -30,000처럼 금액의 맨 앞에만 쓸 수 있습니다.",
    of_won.point,        of_won.comma,
    of_won.too_large,    of_won.unclear};
constexpr refusals of_ten_thousand_won{"금액은 만원 단위이니 3500이나 3500만처럼 입력하세요.",
                                       of_won.minus,
                                       "금액에는 점(.)을 쓸 수 없으니 3500처럼 만원 단위로 입력하세요.",
                                       "쉼표의 자리가 맞지 않으니 3,500처럼 세 자리마다 찍어 입력하세요.",
                                       "금액은 만원 단위이며 214,748까지 입력할 수 있습니다.",
                                       "'%1' 다음의 금액이 분명하지 않으니 3500이나 3500만처럼 입력하세요."};
constexpr refusals of_count{"수는 120이나 1,200처럼 숫자로만 입력하세요.",
                            "수에는 빼기 기호(-)를 쓸 수 없으니 0 이상으로 입력하세요.",
                            "수에는 점(.)을 쓸 수 없으니 1,200처럼 입력하세요.",
                            "쉼표의 자리가 맞지 않으니 1,200처럼 세 자리마다 찍어 입력하세요.",
                            "수는 2,147,483,647까지 입력할 수 있습니다.",
                            ""};

const refusals& refusals_of(amount_kind kind)
{
    switch (kind) {
    case amount_kind::won:
        break;
    case amount_kind::signed_won:
        return of_signed_won;
    case amount_kind::ten_thousand_won:
        return of_ten_thousand_won;
    case amount_kind::count:
        return of_count;
    }
    return of_won;
}

typed_amount refused(const char* sentence)
{
    return {{}, QString::fromUtf8(sentence)};
}

typed_amount within_bounds(qint64 number, const refusals& say)
{
    if (number > largest_amount)
        return refused(say.too_large);
    return {number, {}};
}

/// Digits with or without separators. "3,00" is refused: it is as likely 300 as 3,000.
typed_amount read_digits(QStringView text, const refusals& say)
{
    static const QRegularExpression amount{QStringLiteral("^(\\d+|[1-9]\\d{0,2}(,\\d{3})+)$")};
    if (!amount.match(text.toString()).hasMatch())
        return refused(text.contains(u',') ? say.comma : say.not_a_number);
    qint64 number = 0;
    for (const QChar c : text)
        if (c != u',')
            number = std::min(number * 10 + c.digitValue(), largest_amount + 1);
    return within_bounds(number, say);
}

struct unit {
    QChar sign;
    qint64 won;
};

constexpr unit units[] = {{u'억', 100'000'000}, {u'만', 10'000}, {u'천', 1'000}, {u'백', 100}, {u'십', 10}};

typed_amount read_with_units(QStringView text, const refusals& say)
{
    const auto* largest = std::ranges::find_if(units, [&](const unit& u) { return text.contains(u.sign); });
    if (largest == std::end(units))
        return read_digits(text, say);
    const qsizetype at = text.indexOf(largest->sign);
    const QStringView in_front = text.first(at).trimmed();
    const QStringView behind = text.sliced(at + 1).trimmed();
    const typed_amount count = in_front.isEmpty() ? typed_amount{1, {}} : read_with_units(in_front, say);
    const typed_amount rest = behind.isEmpty() ? typed_amount{0, {}} : read_with_units(behind, say);
    if (!count.number || !rest.number)
        return count.number ? rest : count;
    // "3만5" is 35,000 in speech and 30,005 on paper.
    if (*rest.number >= largest->won || (behind.size() == 1 && behind.front().isDigit()))
        return {{}, QString::fromUtf8(say.unclear).arg(largest->sign)};
    return within_bounds(*count.number * largest->won + *rest.number, say);
}

/// Takes the signs of the currency out of the text, and tells whether there were any.
bool take_won_signs(QString& text)
{
    const qsizetype before = text.size();
    if (text.startsWith(u'₩') || text.startsWith(u'\\')) // the key of the won sign sends a backslash
        text.remove(0, 1);
    if (text.endsWith(u'원'))
        text.chop(1);
    return text.size() < before;
}

typed_amount in_ten_thousands(const QString& won, const refusals& say)
{
    constexpr qint64 ten_thousand = 10'000;
    const typed_amount read = read_with_units(QStringView{won}.trimmed(), say);
    if (!read.number)
        return read;
    return *read.number % ten_thousand == 0 ? typed_amount{*read.number / ten_thousand, {}}
                                            : refused(say.not_a_number);
}

typed_date refused_date(const QString& sentence)
{
    return {{}, {}, {}, sentence};
}

/// The three parts as they were caught, or the refusal of one that no list has.
typed_date checked(const QRegularExpressionMatch& caught, int first)
{
    const auto part = [&](const char* name) { return caught.captured(QLatin1String{name}); };
    const auto outside = [](const QString& text, int from, int to) {
        return !text.isEmpty() && (text.toInt() < from || text.toInt() > to);
    };
    typed_date date{part("y"), part("m"), part("d"), {}};
    if (outside(date.year, first, last_year))
        return refused_date(
            QStringLiteral("연도는 %1부터 %2까지 입력할 수 있습니다.").arg(first).arg(last_year));
    if (outside(date.month, 1, 12))
        return refused_date(QStringLiteral("월은 1부터 12까지 입력할 수 있습니다."));
    if (outside(date.day, 1, 31))
        return refused_date(QStringLiteral("일은 1부터 31까지 입력할 수 있습니다."));
    for (QString* two_digits : {&date.month, &date.day})
        if (two_digits->size() == 1)
            two_digits->prepend(u'0');
    return date;
}

QRegularExpressionMatch whole_match(const QString& form, const QString& text)
{
    return QRegularExpression{QRegularExpression::anchoredPattern(form)}.match(text);
}

typed_date first_match(const QString& text, std::initializer_list<QString> forms, const QString& refusal,
                       int first = first_year)
{
    if (text.isEmpty())
        return {};
    for (const QString& form : forms)
        if (const auto caught = whole_match(form, text); caught.hasMatch())
            return checked(caught, first);
    return refused_date(refusal);
}

/// One or two digits; matches nothing where they would be a year, whose century they do not tell.
QString bare_part(date_part alone)
{
    return alone == date_part::day     ? QStringLiteral("(?<d>\\d{1,2}) *일?")
           : alone == date_part::month ? QStringLiteral("(?<m>\\d{1,2}) *월?")
                                       : QStringLiteral("(?!)");
}

} // namespace

typed_amount read_amount(QStringView typed, amount_kind kind)
{
    const refusals& say = refusals_of(kind);
    QString text = half_width(typed);
    if (text.isEmpty())
        return {};
    const bool is_negative = kind == amount_kind::signed_won && text.startsWith(u'-');
    if (is_negative)
        text = text.sliced(1).trimmed();
    if (text.contains(u'-'))
        return refused(say.minus);
    if (text.contains(u'.'))
        return refused(say.point);
    if (kind == amount_kind::count)
        return read_digits(text, say);
    // Each unit stands in an amount a few times at most; a text pasted by mistake is not taken apart.
    constexpr qsizetype longest_with_units = 40;
    const bool has_units = std::ranges::any_of(units, [&](const unit& u) { return text.contains(u.sign); });
    if (has_units && text.size() > longest_with_units)
        return refused(say.not_a_number);
    const bool is_in_won = take_won_signs(text) || has_units;
    if (kind == amount_kind::ten_thousand_won)
        return in_ten_thousands(is_in_won ? text : text + u'만', say);
    typed_amount read = read_with_units(QStringView{text}.trimmed(), say);
    if (read.number && is_negative)
        read.number = -*read.number;
    return read;
}

typed_date read_date(QStringView typed, int bare_year, date_part alone, int first)
{
    const QString text = half_width(typed);
    static const QString month_and_day = QStringLiteral("(?<m>\\d{1,2}) *[-./월 ] *(?<d>\\d{1,2}) *[.일]?");
    if (whole_match(month_and_day, text).hasMatch())
        return read_date(QString::number(bare_year) + u'-' + text, bare_year, date_part::year, first);
    return first_match(
        text,
        {QStringLiteral("(?<y>\\d{4})(?<m>\\d\\d)(?<d>\\d\\d)"),
         QStringLiteral("(?<y>\\d{4}) *[-./년 ] *") + month_and_day,
         QStringLiteral("(?<y>\\d{4})(?: *[-./년 ] *(?<m>\\d{1,2}))? *[.년월]?"), bare_part(alone)},
        QStringLiteral("날짜는 연도를 네 자리로 하여 20261122나 2026-11-22처럼 입력하세요."), first);
}

typed_date read_month(QStringView typed, date_part alone)
{
    return first_match(half_width(typed),
                       {QStringLiteral("(?<y>\\d{4})(?<m>\\d\\d)"),
                        QStringLiteral("(?<y>\\d{4})(?: *[-./년 ] *(?<m>\\d{1,2}))? *[.년월]?"),
                        bare_part(alone)},
                       QStringLiteral("연월은 연도를 네 자리로 하여 202611이나 2026-11처럼 입력하세요."));
}

} // namespace orvo
