#include "ui/icons.h"

#include <QFile>
#include <QGuiApplication>
#include <QIconEngine>
#include <QPainter>
#include <QPalette>
#include <QSvgRenderer>

static void initialise_icons()
{
    Q_INIT_RESOURCE(icons);
}

namespace orvo {

namespace {

/// Draws the picture anew at each size, so that no scaling blurs it.
class line_icon : public QIconEngine {
public:
    line_icon(const char* name, const QColor& colour)
    {
        QFile file{QStringLiteral(":/icons/%1.svg").arg(QLatin1String(name))};
        if (file.open(QIODevice::ReadOnly))
            drawing_ = file.readAll().replace("currentColor", colour.name().toLatin1());
    }

    void paint(QPainter* painter, const QRect& where, QIcon::Mode mode, QIcon::State) override
    {
        if (mode == QIcon::Disabled)
            painter->setOpacity(0.4);
        QSvgRenderer{drawing_}.render(painter, where);
    }

    QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override
    {
        QPixmap picture{size};
        picture.fill(Qt::transparent);
        QPainter painter{&picture};
        paint(&painter, QRect{{}, size}, mode, state);
        return picture;
    }

    QIconEngine* clone() const override { return new line_icon{*this}; }

private:
    QByteArray drawing_;
};

} // namespace

QIcon icon(const char* name, const QColor& colour)
{
    // The pictures lie in a static library, whose resources nothing registers unasked.
    [[maybe_unused]] static const bool registered = (initialise_icons(), true);
    return QIcon{new line_icon{name, colour}};
}

QIcon icon(const char* name)
{
    return icon(name, QGuiApplication::palette().color(QPalette::WindowText));
}

} // namespace orvo
