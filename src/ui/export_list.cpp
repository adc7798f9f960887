#include "ui/export_list.h"

#include "base/amount.h"
#include "client/client.h"
#include "files/write_list.h"
#include "ui/failures.h"
#include "ui/show_error.h"
#include "ui/wait_sign.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QFileInfo>
#include <QMenu>

#include <memory>

namespace orvo {

namespace {

/// Shows how far a list is that takes over a second, and lets the operator end it.
class export_progress : public progress {
public:
    explicit export_progress(qint64 rows) : rows_{rows} { running_.start(); }

    bool go_on(qint64 so_far) override
    {
        if (running_.elapsed() < 1000)
            return true;
        if (!sign_)
            sign_ = std::make_unique<wait_sign>(QApplication::activeWindow());
        return sign_->show_wait(QStringLiteral("파일을 작성하고 있습니다... %1 / %2")
                                    .arg(with_separators(so_far), with_separators(rows_)),
                                true);
    }

private:
    qint64 rows_;
    QElapsedTimer running_;
    std::unique_ptr<wait_sign> sign_;
};

/// The name under which a workbook is written: what is inside is the newer format, and a name that says
/// otherwise would be refused by the program that opens it. Empty where a file of that name is to stay.
QString workbook_name(client& c, const QString& asked)
{
    const QString old_ending = QStringLiteral(".xls");
    if (!asked.endsWith(old_ending, Qt::CaseInsensitive))
        return asked;
    const QString name = asked.chopped(old_ending.size()) + QStringLiteral(".xlsx");
    const bool is_free =
        !QFileInfo::exists(name) ||
        c.say.ask(
            {QStringLiteral("%1 파일이 이미 있습니다.\n바꾸시겠습니까?").arg(QFileInfo{name}.fileName()),
             QStringLiteral("확인"), sign::exclamation},
            QStringLiteral("바꾸기(&R)"), QStringLiteral("취소(&C)"), answer::second);
    return is_free ? name : QString{};
}

} // namespace

void export_csv(client& c, const text_table& list, const QString& number_caption)
{
    failures::guard(c.say, failures::policy::show_error, [&] {
        const file_to_be file =
            c.say.file_to_write({QStringLiteral("(*.csv)콤마로 분리된 텍스트 파일|*.csv"),
                                 QStringLiteral("(*.csv)콤마로 분리된 텍스트 파일 (cp949)|*.csv")});
        if (file.path.isEmpty())
            return show_error(c.say, error_number::file_dialog_cancelled, {});
        qint64 lost = 0;
        {
            export_progress follow{list.row_count};
            lost = write_csv(file.path, list, &follow, number_caption,
                             file.filter == 1 ? csv_encoding::cp949 : csv_encoding::utf8);
        }
        if (list.row_count == 0)
            return c.say.tell({QStringLiteral("엑셀로 변환할 내용이 없습니다."), QStringLiteral("확인"),
                               sign::exclamation});
        message done{QStringLiteral("CSV 파일이 작성 되었습니다."), QStringLiteral("확인"),
                     sign::information};
        if (lost > 0)
            done.about =
                QStringLiteral("cp949에 없는 글자 %1자를 ?로 바꾸었습니다. 그대로 두려면 첫째 형식으로 "
                               "저장하십시오.")
                    .arg(with_separators(lost));
        c.say.tell(done);
    });
}

void make_excel_file(client& c, const QStringList& header, const text_table& list)
{
    failures::guard(c.say, failures::policy::plain_box, [&] {
        const QString asked =
            c.say
                .file_to_write(
                    {QStringLiteral("엑셀파일(*.xls)|*.xls"), QStringLiteral("엑셀파일(*.xlsx)|*.xlsx")}, 1)
                .path;
        if (asked.isEmpty())
            return c.say.tell({QStringLiteral("파일이름을 입력하여 주세요")});
        const QString name = workbook_name(c, asked);
        if (name.isEmpty())
            return c.say.note(QStringLiteral("취소했습니다."));
        {
            export_progress follow{list.row_count};
            write_workbook(name, header, list, &follow);
        }
        if (name != asked)
            c.say.note(QStringLiteral("%1(으)로 저장했습니다.").arg(QFileInfo{name}.fileName()));
        c.say.tell({QStringLiteral("엑셀파일이 작성 되었습니다.")});
    });
}

void add_export_actions(QMenu& to, client& c, std::function<text_table()> list)
{
    to.addAction(QStringLiteral("CSV 파일로 저장(&S)..."), &to, [&c, list] { export_csv(c, list()); });
    to.addAction(QStringLiteral("엑셀 파일로 저장(&X)..."), &to, [&c, list] {
        make_excel_file(c, {QStringLiteral("작성일자"), c.today()}, list());
    });
}

} // namespace orvo
