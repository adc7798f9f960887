#pragma once

#include <QColor>
#include <QPalette>

class QApplication;

namespace orvo {

enum class shade { light, dark };

/// Colours that no palette role names.
struct theme_colours {
    QColor accent;
    QColor on_accent;
    QColor quiet_text; ///< what is said in passing: hints, counts
    QColor required;   ///< the mark of a required field
    QColor outline;    ///< of fields, boxes and buttons
};

/// Sets style, palette, fonts and the Korean words of the toolkit. Called once, before the first window.
void apply_theme(QApplication& app, shade which);

/// What ORVO_THEME says ("light", "dark"); else what the desktop's own palette looks like.
shade preferred_shade();

const theme_colours& colours();
/// Of the one filled button of a window. Made once, as all palettes are that a screen needs: the toolkit
/// keeps pictures for each.
const QPalette& main_button_palette();

} // namespace orvo
