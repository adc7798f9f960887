#pragma once

#include <QLineEdit>

namespace orvo {

/// An address whose usual domain stands there already: who comes by Tab or Enter types the part in front of
/// it, where a selection would be typed over.
class email_field : public QLineEdit {
public:
    using QLineEdit::QLineEdit;

    void show_domain(const QString& domain)
    {
        domain_ = domain;
        setText(domain);
        setCursorPosition(0);
    }

protected:
    void focusInEvent(QFocusEvent* event) override
    {
        QLineEdit::focusInEvent(event);
        if (domain_.isEmpty() || text() != domain_)
            return;
        deselect();
        setCursorPosition(0);
    }

private:
    QString domain_;
};

} // namespace orvo
