#pragma once

#include "db/rows.h"

#include <QComboBox>
#include <QLineEdit>
#include <QPushButton>
#include <QToolButton>

namespace orvo {

/// Pixels for that many half-width characters in the font of the field.
int room_for(const QWidget* field, int characters);

/// A text field as wide as `shown` characters, which takes at most `longest` (0: no bound).
QLineEdit* text_field(const QString& name, int shown, int longest = 0);
/// The same for a field that is more than that.
void set_up_text_field(QLineEdit& field, const QString& name, int shown, int longest);

/// The same for numbers that are kept as text: nothing but the digits 0 to 9 can be typed.
QLineEdit* digits_field(const QString& name, int shown, int longest);

/// A button with an icon and a mnemonic in its caption. Takes no Enter from other fields.
QPushButton* button(const QString& name, const QString& caption, const char* icon_name = nullptr);

/// The small button behind a list or address that opens the dialog to pick it from: by click, or by F2 in one
/// of its fields. Tab walks the fields alone. `what` is said by the tooltip and to screen readers.
QToolButton* picker_button(const QString& name, const QString& what, std::initializer_list<QWidget*> fields,
                           const char* icon_name = "ellipsis");

/// The one filled button of a screen, which Enter presses.
QPushButton* primary_button(const QString& name, const QString& caption, const char* icon_name);

/// A drop-down list that keeps a code with each entry.
class code_list : public QComboBox {
public:
    explicit code_list(const QString& name, int shown = 12);

    void add(const QString& text, qint64 code);
    /// Empties the list and takes an entry from each row.
    void fill(const rows& from, std::string_view text_column, std::string_view code_column);
    /// Takes out what is not among these rows, by text and code. False where the choice went with it: then
    /// nothing is chosen.
    bool keep_only(const rows& these, std::string_view text_column, std::string_view code_column);
    /// The code of the chosen entry; an empty text where none is chosen.
    QString code() const;
    /// Chooses the first entry with that code, or none.
    void choose_code(qint64 code);
    /// Chooses the first entry of that text, or none.
    void choose_text(const QString& text);

    /// As small whatever its entries are. The toolkit's own policy for that would make the box that drops
    /// down along with each list: eight widgets more, three dozen times in a form, and few are ever opened.
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

    /// Whether the entry that is being picked is one that arrow keys pass in the closed list.
    bool is_stepped_through() const { return is_stepped_through_; }

protected:
    void keyPressEvent(QKeyEvent* event) override;
    /// A wheel that rolls over the form must not change what it passes.
    void wheelEvent(QWheelEvent* event) override;

private:
    bool is_stepped_through_ = false;
};

/// A drop-down list of plain texts, none of them chosen.
code_list* text_list(const QString& name, const QStringList& texts, int shown);

/// Texts "01" to the two digits of `last`.
QStringList two_digit_texts(int first, int last);

} // namespace orvo
