#pragma once

#include "db/rows.h"

#include <QComboBox>
#include <QLineEdit>
#include <QPushButton>

namespace orvo {

/// A text field as wide as `shown` characters, which takes at most `longest` (0: no bound).
QLineEdit* text_field(const QString& name, int shown, int longest = 0);

/// A button with an icon and a mnemonic in its caption. Takes no Enter from other fields.
QPushButton* button(const QString& name, const QString& caption, const char* icon_name = nullptr);

/// The one filled button of a screen, which Enter presses.
QPushButton* primary_button(const QString& name, const QString& caption, const char* icon_name);

/// A drop-down list that keeps a code with each entry.
class code_list : public QComboBox {
public:
    explicit code_list(const QString& name, int shown = 12);

    void add(const QString& text, qint64 code);
    /// Empties the list and takes an entry from each row.
    void fill(const rows& from, std::string_view text_column, std::string_view code_column);
    /// The code of the chosen entry; an empty text where none is chosen.
    QString code() const;
    /// Chooses the first entry with that code, or none.
    void choose_code(qint64 code);
    /// Chooses the first entry of that text, or none.
    void choose_text(const QString& text);
};

/// A drop-down list of plain texts, none of them chosen.
code_list* text_list(const QString& name, const QStringList& texts, int shown);

/// Texts "01" to the two digits of `last`.
QStringList two_digit_texts(int first, int last);

/// The field shows and is copied from, but cannot be changed.
void make_read_only(QWidget* field);

} // namespace orvo
