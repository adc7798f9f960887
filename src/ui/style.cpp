#include "ui/style.h"

#include "ui/theme.h"

#include <QGuiApplication>
#include <QListWidget>
#include <QPainter>
#include <QStyleOption>

namespace orvo {

namespace {

constexpr const char* is_main = "is_main_button";
constexpr qreal roundness = 2; // pixels, as Fusion's

/// Along the middle of the outermost pixels.
QRectF outline_of(const QStyleOption& option)
{
    return QRectF{option.rect}.adjusted(0.5, 0.5, -0.5, -0.5);
}

QPen outline_pen(const QStyleOption& option)
{
    if (option.state.testFlag(QStyle::State_HasFocus) && option.state.testFlag(QStyle::State_Enabled))
        return {colours().accent, 1.5};
    return option.state.testFlag(QStyle::State_Enabled) ? colours().outline
                                                        : option.palette.color(QPalette::Mid);
}

void draw_main_button(const QStyleOption& option, QPainter& painter)
{
    const bool is_enabled = option.state.testFlag(QStyle::State_Enabled);
    QColor fill = option.palette.color(QPalette::Button);
    if (is_enabled && option.state.testFlag(QStyle::State_Sunken))
        fill = fill.darker(120);
    else if (is_enabled && option.state.testFlag(QStyle::State_MouseOver))
        fill = fill.darker(108);
    painter.setBrush(fill);
    painter.setPen(is_enabled ? fill : option.palette.color(QPalette::Mid));
    painter.drawRoundedRect(outline_of(option), roundness, roundness);
    if (!is_enabled || !option.state.testFlag(QStyle::State_HasFocus))
        return;
    painter.setBrush(Qt::NoBrush);
    painter.setPen(option.palette.color(QPalette::ButtonText));
    painter.drawRoundedRect(outline_of(option).adjusted(2, 2, -2, -2), roundness, roundness);
}

/// The toolkit keeps the pictures of buttons, lists and captions by the key of their palette, and gives each
/// widget the application's palette under another key: each window that was ever opened would leave its own.
void share_palette(const QStyleOption* option)
{
    const QPalette all = QGuiApplication::palette();
    if (option->palette == all)
        const_cast<QStyleOption*>(option)->palette = all;
}

} // namespace

void style::drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                        const QWidget* widget) const
{
    share_palette(option);
    QProxyStyle::drawControl(element, option, painter, widget);
}

void style::drawComplexControl(ComplexControl control, const QStyleOptionComplex* option, QPainter* painter,
                               const QWidget* widget) const
{
    share_palette(option);
    QProxyStyle::drawComplexControl(control, option, painter, widget);
}

void style::drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                          const QWidget* widget) const
{
    share_palette(option);
    const bool is_button = element == PE_PanelButtonCommand;
    const bool is_main_one = is_button && widget && widget->property(is_main).toBool();
    if (!is_main_one)
        QProxyStyle::drawPrimitive(element, option, painter, widget);
    const bool is_round = element == PE_IndicatorRadioButton;
    if (!is_button && !is_round && element != PE_FrameLineEdit && element != PE_IndicatorCheckBox)
        return;
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    if (is_main_one) {
        draw_main_button(*option, *painter);
    } else {
        painter->setBrush(Qt::NoBrush);
        painter->setPen(outline_pen(*option));
        if (is_round)
            painter->drawEllipse(outline_of(*option));
        else
            painter->drawRoundedRect(outline_of(*option), roundness, roundness);
    }
    painter->restore();
}

int style::styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                     QStyleHintReturn* answer) const
{
    // The lists of the screens act on a click, as the tables do; the toolkit's file dialog keeps its ways.
    if (hint == SH_ItemView_ActivateItemOnSingleClick && dynamic_cast<const QListWidget*>(widget))
        return 1;
    return QProxyStyle::styleHint(hint, option, widget, answer);
}

void mark_as_main(QWidget& button)
{
    button.setProperty(is_main, true);
}

} // namespace orvo
