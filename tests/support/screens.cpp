#include "support/screens.h"

#include "ui/theme.h"

#include <QApplication>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QRadioButton>
#include <QTest>

#include <map>

namespace orvo {

int run_screen_tests(QObject& tests, int argc, char** argv)
{
    QApplication app{argc, argv};
    apply_theme(app, shade::light);
    return QTest::qExec(&tests, argc, argv);
}

void bring_up(QWidget& window, int width, int height)
{
    if (width > 0)
        window.resize(width, height);
    window.show();
    window.activateWindow();
    if (!QTest::qWaitForWindowActive(&window))
        throw std::logic_error{"the window does not come up"};
}

void press_keys(const QWidget& window, const QString& keys)
{
    static const std::map<char, Qt::Key> named{
        {'E', Qt::Key_Return}, {'T', Qt::Key_Tab}, {'D', Qt::Key_Down}, {'X', Qt::Key_Delete}};
    for (const char key : keys.toLatin1())
        if (const auto found = named.find(key); found != named.end())
            QTest::keyClick(window.focusWidget(), found->second);
        else
            QTest::keyClick(window.focusWidget(), key);
}

QString shown_by(const QObject& one)
{
    if (const auto* field = dynamic_cast<const QLineEdit*>(&one))
        return field->text();
    if (const auto* list = dynamic_cast<const QComboBox*>(&one))
        return list->currentText();
    if (const auto* label = dynamic_cast<const QLabel*>(&one))
        return label->text();
    if (const auto* box = dynamic_cast<const QAbstractButton*>(&one))
        return box->isChecked() ? QStringLiteral("1") : QString{};
    throw std::logic_error{"not a control that shows a value"};
}

} // namespace orvo
