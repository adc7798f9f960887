#include "ui/show_error.h"

#include "db/failure.h"

#include <QGuiApplication>

namespace orvo {

void show_error(prompts& say, std::int32_t err_no, const QString& err_text)
{
    while (QGuiApplication::overrideCursor())
        QGuiApplication::restoreOverrideCursor();
    switch (err_no) {
    case error_number::unreachable:
        return say.tell({QStringLiteral("서버에 연결할 수 없습니다!\n"
                                        "인터넷에 연결되어 있는지 확인하고, 잠시 후에 다시 시도하십시오!"),
                         QStringLiteral("서버연결 에러"), sign::critical});
    case error_number::login_refused:
        return say.tell({QStringLiteral("서버에 로그인 할 수 없습니다! 관리자에게 문의하시기 바랍니다!"),
                         QStringLiteral("로그인 에러"), sign::critical});
    case error_number::overflow:
        return say.tell(
            {QStringLiteral("데이터량이 초과 하였습니다."), QStringLiteral("검색에러"), sign::critical});
    case error_number::file_dialog_cancelled:
        return;
    default:
        return say.tell({err_text, QStringLiteral("에러"), sign::exclamation});
    }
}

} // namespace orvo
