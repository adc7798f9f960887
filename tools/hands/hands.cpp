#include "hands/hands.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QInputMethodEvent>
#include <QTest>

namespace orvo {

QWidget* seen(const char* name)
{
    const QWidget* modal = QApplication::activeModalWidget();
    for (QWidget* window : QApplication::topLevelWidgets()) {
        if (!window->isVisible() || (modal && window != modal))
            continue;
        if (window->objectName() == QLatin1String(name))
            return window;
        for (QWidget* each : window->findChildren<QWidget*>(QString::fromLatin1(name)))
            if (each->isVisible())
                return each;
    }
    return nullptr;
}

void type(QWidget* into, const QString& text)
{
    into->setFocus();
    QInputMethodEvent event;
    event.setCommitString(text);
    QApplication::sendEvent(into, &event);
}

void press(QWidget* on, Qt::Key key)
{
    QTest::keyClick(on, key);
}

void click(QWidget* on)
{
    QTest::mouseClick(on, Qt::LeftButton);
}

void click_row(QWidget* list, int row)
{
    auto* view = static_cast<QAbstractItemView*>(list);
    const QRect cell = view->visualRect(view->model()->index(row, 0));
    QTest::mouseClick(view->viewport(), Qt::LeftButton, {}, cell.center());
}

} // namespace orvo
