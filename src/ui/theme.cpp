#include "ui/theme.h"

#include "ui/style.h"

#include <QApplication>
#include <QFont>
#include <QLibraryInfo>
#include <QTranslator>

namespace orvo {

namespace {

struct shade_table {
    QRgb window, base, zebra, button, text, quiet, line, outline, accent, on_accent, selection, on_selection,
        required;
};

constexpr shade_table light_shades{0xfff5f6f8, 0xffffffff, 0xfff4f7fb, 0xfffafbfc, 0xff1d2733,
                                   0xff667282, 0xffc9d0d9, 0xff929daa, 0xff1f6f8b, 0xffffffff,
                                   0xffcfe6ee, 0xff10222b, 0xffc0392b};
constexpr shade_table dark_shades{0xff1b1f24, 0xff2a3037, 0xff2f363e, 0xff39414b, 0xffe4e8ec,
                                  0xffa3adb9, 0xff4a535d, 0xff6f7a87, 0xff58b0cc, 0xff0d1a20,
                                  0xff2b586d, 0xfff2f8fb, 0xffff8a7a};

theme_colours current;
QPalette of_main_button;

QPalette palette_of(const shade_table& s)
{
    QPalette p;
    p.setColor(QPalette::Window, QColor{s.window});
    p.setColor(QPalette::WindowText, QColor{s.text});
    p.setColor(QPalette::Base, QColor{s.base});
    p.setColor(QPalette::AlternateBase, QColor{s.zebra});
    p.setColor(QPalette::Text, QColor{s.text});
    p.setColor(QPalette::PlaceholderText, QColor{s.quiet});
    p.setColor(QPalette::Button, QColor{s.button});
    p.setColor(QPalette::ButtonText, QColor{s.text});
    p.setColor(QPalette::BrightText, QColor{s.required});
    p.setColor(QPalette::ToolTipBase, QColor{s.base});
    p.setColor(QPalette::ToolTipText, QColor{s.text});
    p.setColor(QPalette::Highlight, QColor{s.selection});
    p.setColor(QPalette::HighlightedText, QColor{s.on_selection});
    p.setColor(QPalette::Link, QColor{s.accent});
    p.setColor(QPalette::Mid, QColor{s.line});
    p.setColor(QPalette::Midlight, QColor{s.line}.lighter(110));
    p.setColor(QPalette::Dark, QColor{s.line}.darker(120));
    p.setColor(QPalette::Light, QColor{s.base});
    p.setColor(QPalette::Shadow, QColor{s.line}.darker(150));
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        p.setColor(QPalette::Disabled, role, QColor{s.quiet});
    for (const auto role : {QPalette::Base, QPalette::Button})
        p.setColor(QPalette::Disabled, role, QColor{s.window});
    return p;
}

} // namespace

shade preferred_shade()
{
    const QString named = qEnvironmentVariable("ORVO_THEME");
    if (named == QLatin1String("dark"))
        return shade::dark;
    if (named == QLatin1String("light"))
        return shade::light;
    return QApplication::palette().color(QPalette::Window).lightness() < 128 ? shade::dark : shade::light;
}

void apply_theme(QApplication& app, shade which)
{
    const shade_table& s = which == shade::dark ? dark_shades : light_shades;
    current = {QColor{s.accent}, QColor{s.on_accent}, QColor{s.quiet}, QColor{s.required}, QColor{s.outline}};
    QApplication::setStyle(new style);
    QApplication::setPalette(palette_of(s));
    of_main_button = QApplication::palette();
    for (const auto group : {QPalette::Active, QPalette::Inactive}) {
        of_main_button.setColor(group, QPalette::Button, current.accent);
        of_main_button.setColor(group, QPalette::ButtonText, current.on_accent);
    }
    // One face for all Korean text; the second has the rare Hanja that the first lacks.
    QFont font;
    font.setFamilies({QStringLiteral("NanumGothic"), QStringLiteral("Noto Sans CJK KR")});
    font.setPointSizeF(9);
    QApplication::setFont(font);
    auto* words = new QTranslator{&app};
    if (words->load(QStringLiteral("qtbase_ko"), QLibraryInfo::path(QLibraryInfo::TranslationsPath)))
        QApplication::installTranslator(words);
}

const theme_colours& colours()
{
    return current;
}

const QPalette& main_button_palette()
{
    return of_main_button;
}

} // namespace orvo
