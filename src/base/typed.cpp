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

typed_amount refused(const QString& sentence)
{
    return {{}, sentence};
}

typed_amount not_an_amount()
{
    return refused(QStringLiteral("금액은 30,000이나 3만처럼 숫자로 입력하세요."));
}

typed_amount within_bounds(qint64 won)
{
    if (won > largest_amount)
        return refused(QStringLiteral("금액은 2,147,483,647원까지 입력할 수 있습니다."));
    return {won, {}};
}

/// Digits with or without separators. "3,00" is refused: it is as likely 300 as 3,000.
typed_amount read_digits(QStringView text)
{
    static const QRegularExpression amount{QStringLiteral("^(\\d+|[1-9]\\d{0,2}(,\\d{3})+)$")};
    if (!amount.match(text.toString()).hasMatch())
        return text.contains(u',') ? refused(QStringLiteral(
                                         "쉼표의 자리가 맞지 않으니 30,000처럼 세 자리마다 찍어 입력하세요."))
                                   : not_an_amount();
    qint64 won = 0;
    for (const QChar c : text)
        if (c != u',')
            won = std::min(won * 10 + c.digitValue(), largest_amount + 1);
    return within_bounds(won);
}

struct unit {
    QChar sign;
    qint64 won;
};

constexpr unit units[] = {{u'억', 100'000'000}, {u'만', 10'000}, {u'천', 1'000}, {u'백', 100}, {u'십', 10}};

typed_amount read_with_units(QStringView text)
{
    const auto* largest = std::ranges::find_if(units, [&](const unit& u) { return text.contains(u.sign); });
    if (largest == std::end(units))
        return read_digits(text);
    const qsizetype at = text.indexOf(largest->sign);
    const QStringView in_front = text.first(at).trimmed();
    const QStringView behind = text.sliced(at + 1).trimmed();
    const typed_amount count = in_front.isEmpty() ? typed_amount{1, {}} : read_with_units(in_front);
    const typed_amount rest = behind.isEmpty() ? typed_amount{0, {}} : read_with_units(behind);
    if (!count.won || !rest.won)
        return count.won ? rest : count;
    // "3만5" is 35,000 in speech and 30,005 on paper.
    if (*rest.won >= largest->won || (behind.size() == 1 && behind.front().isDigit()))
        return refused(QStringLiteral("'%1' 다음의 금액이 분명하지 않으니 35,000이나 3만5천처럼 입력하세요.")
                           .arg(largest->sign));
    return within_bounds(*count.won * largest->won + *rest.won);
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

typed_amount read_amount(QStringView typed)
{
    QString text = half_width(typed);
    if (text.isEmpty())
        return {};
    if (text.contains(u'-'))
        return refused(QStringLiteral("금액에는 빼기 기호(-)를 쓸 수 없으니 0원 이상으로 입력하세요."));
    if (text.contains(u'.'))
        return refused(QStringLiteral("금액에는 점(.)을 쓸 수 없으니 30,000처럼 원 단위로 입력하세요."));
    // The key of the won sign sends a backslash.
    if (text.startsWith(u'₩') || text.startsWith(u'\\'))
        text.remove(0, 1);
    if (text.endsWith(u'원'))
        text.chop(1);
    // Each unit stands in an amount a few times at most; a text pasted by mistake is not taken apart.
    constexpr qsizetype longest_with_units = 40;
    const bool has_units = std::ranges::any_of(units, [&](const unit& u) { return text.contains(u.sign); });
    return has_units && text.size() > longest_with_units ? not_an_amount()
                                                         : read_with_units(QStringView{text}.trimmed());
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
