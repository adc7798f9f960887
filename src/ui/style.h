#pragma once

#include <QProxyStyle>

namespace orvo {

/// Fusion with outlines that can be seen on a light and on a dark window, the focus in the accent colour, and
/// the main button of a dialog in one flat colour, on which its caption reads well.
class style : public QProxyStyle {
public:
    style() : QProxyStyle{QStringLiteral("Fusion")} {}

    void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                       const QWidget* widget) const override;
    void drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                     const QWidget* widget) const override;
    void drawComplexControl(ComplexControl control, const QStyleOptionComplex* option, QPainter* painter,
                            const QWidget* widget) const override;
    int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                  QStyleHintReturn* answer) const override;
};

/// Has the button drawn as the main one of its window.
void mark_as_main(QWidget& button);

} // namespace orvo
