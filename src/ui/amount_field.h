#pragma once

#include "base/typed.h"

#include <QLineEdit>

namespace orvo {

/// A field for whole numbers of a kind. It takes what read_amount takes and shows it with separators when it
/// is left; what cannot be read stays as it was typed, marked, and says why. A stored number that stands
/// there as it was shown is not read at all: it is taken as it is stored.
class amount_field : public QLineEdit {
public:
    amount_field(const QString& name, int shown, amount_kind kind = amount_kind::won);
    void set_kind(amount_kind kind) { kind_ = kind; }

    /// The number that stands there, without separators; empty where none does or it cannot be read.
    QString amount() const;
    /// Why what stands there cannot be taken; empty where it can.
    QString refusal() const;
    /// Shows a stored number with separators, and a text that is no whole number as it is.
    void set_amount(const QString& stored);

protected:
    void focusOutEvent(QFocusEvent* event) override;

private:
    amount_kind kind_;
    QString stored_;
    QString shown_; ///< of what is stored

    bool is_untouched() const { return text() == shown_; }
    void mark(const QString& sentence);
};

} // namespace orvo
