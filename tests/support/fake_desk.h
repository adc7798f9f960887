#pragma once

#include "ui/desk.h"

#include <QList>
#include <QStringList>

namespace orvo {

/// A desk that opens nothing and keeps what it was asked for.
class fake_desk : public desk {
public:
    void show(qint16 code) override { shown.append(code); }
    void ask(const QString& dialog_name) override { asked.append(dialog_name); }
    void open_above(const QString& dialog_name, QWidget*) override { opened_above.append(dialog_name); }

    QList<qint16> shown;
    QStringList asked;
    QStringList opened_above;
};

} // namespace orvo
