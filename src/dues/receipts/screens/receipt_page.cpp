#include "dues/receipts/screens/receipt_page.h"

#include "base/amount.h"
#include "base/korean_numerals.h"
#include "dues/receipts/rules/receipt_queue.h"
#include "ui/window_prompts.h"

#include <QFontMetricsF>
#include <QPainter>

#include <algorithm>

namespace orvo {

namespace {

// The sheet is folded in three, 99 mm each, and put into a DL envelope (220 x 110) whose window is 90 x 45,
// 20 from the left and 15 from the bottom. The sheet slides in it by 10 across and 11 down; what shows
// however it lies is 20 to 100 across and 50 to 84 down. The address keeps 2 to 5 mm away from that.
constexpr double fold = 99;
constexpr QRectF address_place{25, 52, 72, 30};

constexpr double left = address_place.x();
constexpr double right = 210 - left;

constexpr QRgb ink = 0xff15191e;
constexpr QRgb quiet_ink = 0xff5b6570;
constexpr QRgb rule_ink = 0xff8a939d;
constexpr QRgb tint = 0xfff3f5f7;
constexpr QRgb seal_ink = 0xffc3c9d0;

constexpr double row_height = 11;
constexpr double caption_width = 30;
constexpr double hairline = 0.1;
constexpr double fine_line = 0.25;

enum class face { sans, serif };

struct style {
    double points;
    face in = face::sans;
    bool is_bold = false;
    int flags = Qt::AlignLeft | Qt::AlignVCenter;
    QRgb colour = ink;
};

// Texts are set in hundredths of a millimetre, since the size of a font is a whole number of units.
constexpr double fine = 100;

QFont font_of(const style& look, double points)
{
    constexpr double units_per_point = 25.4 / 72 * fine;
    QFont font;
    const QString sans = QStringLiteral("Noto Sans CJK KR");
    const QString second = QStringLiteral("NanumGothic");
    if (look.in == face::serif)
        font.setFamilies({QStringLiteral("Noto Serif CJK KR"), sans, second});
    else
        font.setFamilies({sans, second});
    font.setPixelSize(qRound(points * units_per_point));
    font.setBold(look.is_bold);
    font.setHintingPreference(QFont::PreferNoHinting);
    return font;
}

/// One page in the making.
class sheet {
public:
    explicit sheet(QPainter& on) : on_{on} {}

    /// Returns the height that the text takes, in millimetres.
    double text(const QRectF& place, const QString& what, const style& look)
    {
        if (what.isEmpty())
            return 0;
        const QRectF fine_place{place.topLeft() * fine, place.size() * fine};
        double points = look.points;
        QRectF taken;
        do {
            taken = QFontMetricsF{font_of(look, points)}.boundingRect(fine_place, look.flags, what);
        } while (!(taken.height() <= fine_place.height() && taken.width() <= fine_place.width()) &&
                 (points -= 0.5) >= 5);
        on_.save();
        on_.scale(1 / fine, 1 / fine);
        on_.setFont(font_of(look, std::max(points, 5.0)));
        on_.setPen(QColor{look.colour});
        on_.setClipRect(fine_place.adjusted(-fine, -fine, fine, fine), Qt::IntersectClip);
        on_.drawText(fine_place, look.flags, what);
        on_.restore();
        return taken.height() / fine;
    }

    void across(double y, double from, double to, double width = hairline)
    {
        on_.setPen(QPen{QColor{rule_ink}, width});
        on_.drawLine(QPointF{from, y}, QPointF{to, y});
    }

    void fill(const QRectF& place, QRgb colour) { on_.fillRect(place, QColor{colour}); }

    void frame(const QRectF& place, QRgb colour)
    {
        on_.setPen(QPen{QColor{colour}, fine_line});
        on_.setBrush(Qt::NoBrush);
        on_.drawRect(place);
    }

    /// A caption on its tint, between hairlines.
    void caption(double top, double height, double from, double to, const QString& what)
    {
        fill({from, top, caption_width, height}, tint);
        across(top, from, to);
        across(top + height, from, to);
        text({from + 3, top, caption_width - 4, height}, what,
             {9.5, face::sans, false, Qt::AlignLeft | Qt::AlignVCenter, quiet_ink});
    }

    /// What stands behind a caption.
    void value(double top, double height, double from, double to, const QString& what, const style& look)
    {
        text({from + caption_width + 4, top, to - from - caption_width - 6, height}, what, look);
    }

    void row(double top, double from, double to, const QString& name, const QString& what, const style& look)
    {
        caption(top, row_height, from, to, name);
        value(top, row_height, from, to, what, look);
    }

private:
    QPainter& on_;
};

void draw_address(sheet& page, const receipt& one)
{
    page.text({left, 13, 120, 8}, association_name, {13, face::serif, true});
    page.across(22.5, left, right);
    constexpr int wrapped = Qt::AlignLeft | Qt::AlignTop | Qt::TextWordWrap;
    QRectF rest = address_place;
    rest.setHeight(17); // a long address and a long name share it
    const QString workplace = one.company_name.isEmpty() ? QString{} : u'\n' + one.company_name;
    rest.translate(0, page.text(rest, one.pers_add + workplace, {10.5, face::sans, false, wrapped}) + 0.5);
    rest.setHeight(7);
    page.text(rest, one.pers_name + u' ' + one.pers_call, {13, face::sans, true});
    rest.translate(0, 7);
    rest.setHeight(5.5);
    page.text(rest, one.code_post, {10.5});
    for (const double y : {fold, 2 * fold}) { // where to fold, at the edges
        page.across(y, 4, 8);
        page.across(y, 202, 206);
    }
}

/// The day with the marks in the gaps that were left for them; room to write where there is no day.
QString marked(const QString& in_date)
{
    const auto part = [&](int at, int length) {
        const QString digits = in_date.mid(at, length).trimmed();
        return digits.isEmpty() ? QString(length * 2, QLatin1Char{' '}) : digits;
    };
    return QStringLiteral("%1년 %2월 %3일").arg(part(0, 4), part(8, 2), part(13, 2));
}

void draw_payment(sheet& page, const receipt& one)
{
    page.text({left, 107, right - left, 16}, QStringLiteral("영 수 증"),
              {26, face::serif, true, Qt::AlignCenter});
    page.across(126, left, right, fine_line);
    page.across(127, left, right);
    page.row(132, left, right, QStringLiteral("납입자"), one.pers_name, {12, face::sans, true});
    page.caption(143, 24, left, right, QStringLiteral("금액"));
    page.value(144.5, 12, left, right, in_korean_numerals(one.pres_money), {15, face::serif, true});
    page.value(156, 9.5, left, right, u'₩' + with_separators(one.pres_money), {13});
    page.row(167, left, right, QStringLiteral("납입일"), marked(one.in_date), {11.5});
    page.text({left, 183, right - left, 10}, QStringLiteral("위 금액을 회비로 정히 영수합니다."),
              {12, face::serif, false, Qt::AlignCenter});
}

void draw_membership(sheet& page, const receipt& one)
{
    const double middle = (left + right) / 2;
    page.row(208, left, middle, QStringLiteral("회원종류"), one.mem_kind, {11});
    page.row(208, middle, right, QStringLiteral("회원명"), one.pers_name, {11});
    page.row(219, left, middle, QStringLiteral("면허번호"), one.lic_no, {11});
    page.row(219, middle, right, QStringLiteral("소속지부"), one.branch_name, {11});
    page.row(230, left, right, QStringLiteral("유효기간"), one.valid_until, {11});
    constexpr QRectF seal{right - 24, 256, 24, 24};
    page.text({left, seal.top(), seal.left() - 6 - left, seal.height()}, association_name,
              {19, face::serif, true, Qt::AlignRight | Qt::AlignVCenter});
    page.frame(seal, seal_ink);
    page.text(seal, QStringLiteral("(인)"), {11, face::serif, false, Qt::AlignCenter, seal_ink});
}

} // namespace

void draw_receipt(QPainter& on, const receipt& one)
{
    on.save();
    sheet page{on};
    draw_address(page, one);
    draw_payment(page, one);
    draw_membership(page, one);
    on.restore();
}

} // namespace orvo
