#pragma once

#include <QString>
#include <QWidget>

#include <initializer_list>
#include <variant>
#include <vector>

class QBoxLayout;
class QLabel;
class QLayout;

namespace orvo {

/// A form is written as it looks: rows from top to bottom, a caption beside its controls.
///
///     form({entry{"이름", {name_txt}}, entry{"자택전화번호", {tel1_txt, "-", tel2_txt, "-", tel3_txt}}})
///
/// The caption is the buddy of the first control, a word between two controls of the second unless it is a
/// unit. The others bear the caption and their place as accessible names, so that a screen reader tells them
/// apart; buttons and boxes have words of their own.
struct entry {
    using piece = std::variant<QWidget*, const char*>;

    QString caption;
    std::vector<piece> pieces;
    bool required = false;
    bool fills = false; ///< the last field takes the width that is left; buttons behind it do not
};

/// Rows below each other: captions in one column, controls in the next. Forms above each other keep in line
/// where both leave room for the same `widest` caption.
QLayout* form(const std::vector<entry>& rows, const QString& widest = {});

/// Layouts side by side, each as wide as its share.
QLayout* beside(std::initializer_list<QLayout*> parts, std::initializer_list<int> shares = {});

/// Layouts and widgets one below the other; `filling` (its place in the list) takes the height that is left.
using part = std::variant<QWidget*, QLayout*>;
QLayout* below(std::initializer_list<part> parts, int filling = -1);

/// A line of controls, pushed to the left; or, after a null pointer, to the right.
QLayout* line(std::initializer_list<part> parts);

/// A part of a screen under a heading, without a frame. An empty title leaves its place.
QWidget* group(const QString& name, const QString& title, QLayout* content);

/// The semi-bold line above a part of a screen.
QLabel* heading(const QString& text);

/// Something that is said in passing. It keeps its place while it says nothing, so that nothing jumps, and
/// asks for no width of its own: what it stands below decides.
QLabel* quiet_line(const QString& name, int lines = 1);

inline constexpr int rhythm = 8; ///< pixels between things that belong apart

} // namespace orvo
