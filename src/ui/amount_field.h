#pragma once

#include <QLineEdit>

namespace orvo {

/// A field for whole won. It takes what read_amount takes and shows it with separators when it is left; what
/// cannot be read stays as it was typed, marked, and says why.
class amount_field : public QLineEdit {
public:
    amount_field(const QString& name, int shown);

    /// The digits of what stands there; empty where nothing does or it cannot be read.
    QString amount() const;
    /// Why what stands there cannot be taken; empty where it can.
    QString refusal() const;
    /// Shows a stored number with separators, and a text that is no whole number as it is.
    void set_amount(const QString& stored);

protected:
    void focusOutEvent(QFocusEvent* event) override;

private:
    void mark(const QString& sentence);
};

} // namespace orvo
