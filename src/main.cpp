#include "shell/start.h"
#include "ui/accessible.h"
#include "ui/theme.h"

#include <QApplication>

int main(int argc, char** argv)
{
    QApplication app{argc, argv};
    QApplication::setApplicationName(QStringLiteral("orvo"));
    orvo::apply_theme(app, orvo::preferred_shade());
    orvo::name_controls_for_tools(app);
    orvo::program program;
    if (!program.start(QApplication::arguments().mid(1)))
        return 0;
    return QApplication::exec();
}
