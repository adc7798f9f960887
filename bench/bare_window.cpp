#include <QApplication>
#include <QLabel>

/// The least that a window with Korean text costs.
int main(int argc, char** argv)
{
    QApplication app{argc, argv};
    QFont font;
    font.setFamilies({QStringLiteral("NanumGothic"), QStringLiteral("Noto Sans CJK KR")});
    font.setPointSizeF(9);
    QApplication::setFont(font);
    QLabel window{QStringLiteral("안녕하세요")};
    window.setObjectName(QStringLiteral("bare_window"));
    window.show();
    return QApplication::exec();
}
