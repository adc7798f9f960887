#include "dues/screens/delete_dialogs.h"
#include "dues/screens/header_dialogs.h"
#include "dues/screens/payment_dialogs.h"
#include "support/builders.h"
#include "support/engines.h"
#include "support/fake_desk.h"
#include "support/screens.h"
#include "support/test_register.h"
#include "ui/member_panels.h"

#include <QLabel>
using namespace orvo;

/// The member owes 50,000 for 2025, chosen in the console, and has paid 30,000 of it by line 1.
struct at_console : running_client, fake_desk, member_panels {
    QString refreshed, kim = "9001011234568";
    std::unique_ptr<QDialog> dlg;
    connection& db = c.db_conn;
    at_console() : running_client{engine::embedded}, member_panels{static_cast<desk&>(*this)}
    {
        for (connection* each : {&db, &c.local_conn})
            a_member{kim}.store_in(*each);
        db.direct("insert into money_member(code_member,mem_kind,mem_dues) values (10,'정회원',10000),"
                  "(20,'준회원',20000)");
        db.direct("insert into receipt_place(code_receipt,receipt_name) values (1,'본회'),(2,'은행')");
        a_dues_year{kim, "2025"}.with("yet_money", 20'000).store_in(db);
        a_payment{kim, "2025", 30'000}.with("code_receipt", 1).store_in(db);
        c.selected_pers_no = kim;
        c.cur_val_year = "2025";
        c.cur_code_member = "10"; // as it was clicked, before another kind was given to the year
        c.cur_dues_id = "1";
    }
    void show_dues() override { refreshed += "dues "; }
    void show_dues_lines() override { refreshed += "lines "; }
    void show_contract() override {}
    void show_company() override {}
    void open(const QString& name)
    {
        name == "mem_in"    ? dlg = std::make_unique<mem_in_dlg>(c, *this, nullptr)
        : name == "mem_ud"  ? dlg = std::make_unique<mem_ud_dlg>(c, *this, nullptr)
        : name == "mem_del" ? dlg = std::make_unique<mem_del_dlg>(c, *this, nullptr)
        : name == "dues_in" ? dlg = std::make_unique<dues_in_dlg>(c, *this, nullptr)
        : name == "dues_ud" ? dlg = std::make_unique<dues_ud_dlg>(c, *this, nullptr)
                            : dlg = std::make_unique<dues_del_dlg>(c, *this, nullptr);
        bring_up(*dlg);
    }
    /// Enter, Down and Tab by their first letters, others as they are. What was said then and where the focus
    /// is, or what the console was asked to show behind the closed dialog.
    QString press(const QString& keys)
    {
        static const std::map<QChar, Qt::Key> named{
            {'E', Qt::Key_Return}, {'D', Qt::Key_Down}, {'T', Qt::Key_Tab}};
        for (const QChar key : keys)
            named.contains(key) ? QTest::keyClick(dlg->focusWidget(), named.at(key))
                                : QTest::keyClick(dlg->focusWidget(), key.toLatin1());
        return say.take_texts().join(u'|') +
               (dlg->isVisible() ? '@' + dlg->focusWidget()->objectName() : refreshed + "closed");
    }
    /// What the named controls show; one that cannot be used is followed by a dash.
    QString shown(const QString& names)
    {
        QStringList all;
        for (const QString& name : names.split(u' ')) {
            const auto& one = control<QWidget>(*dlg, qPrintable(name));
            all += shown_by(one) + (one.isEnabled() ? "" : "-");
        }
        return all.join(u' ');
    }
    QString stored()
    {
        const auto all = [this](const char* table, const QString& columns) {
            QString text;
            for (const auto row : db.read(std::string{"select * from "} + table))
                for (const QString& column : columns.split(u' '))
                    text += row.text(column.toStdString()) + u' ';
            return text;
        };
        return all("dues_b_tbl", "pers_mem_day pers_mem_b_day pres_money code_receipt") + ';' +
               all("dues_h_tbl", "val_year code_member mem_dues yet_money incom_flag") + ';' +
               all("person_m_tbl", "code_member");
    }
};
const QString first = "20250315 20250315 30000 1 ";
const QString before = first + ";2025 20 50000 20000 0 ;20 ";
class dues_dialogs_test : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void keys_alone_store_or_are_refused() // dialog; keys; said and done; what is stored then, if it changed
    {
        const QString paid = ";2025 20 50000 0 1 ;20 ";
        const QString half = "입금일이 \"2025년 월 일\"까지만 입력되어 있습니다. 이대로 저장할까요?";
        for (const QString& row : QStringList{
                 "dues_in;DE+EE;dues lines closed;" + first + "20261122  20000 1 " + paid, // five keys
                 "dues_in;DDE20251103EE;dues lines closed;" + first + " 20251103 20000 2 " + paid,
                 "dues_in;EE;입금장소를 입력하지 않으셨습니다.@receipt_cbb",
                 "dues_in;DE+E-5E;dues lines closed;" + first + "20261122  -5 1 ;2025 20 50000 20005 0 ;20 ",
                 "mem_in;DE-5E;금액에는 빼기 기호(-)를 쓸 수 없으니 0원 이상으로 입력하세요.@str_txt",
                 "dues_in;DE1999EEEE;연도는 2000부터 2050까지 입력할 수 있습니다.@con_in_y_cbb",
                 "dues_in;DEEEEE;" + half + "@con_in_m_cbb",
                 "dues_ud;EE55000E;dues lines closed;20250315 20250315 55000 1 ;2025 20 50000 -5000 1 ;20 ",
                 "dues_ud;DEE50000E;dues lines closed; 20250315 50000 2 " + paid, "dues_del;E;closed",
                 "dues_del;TE;dues lines closed;;2025 20 50000 50000 0 ;20 ",
                 "mem_in;EE;금액을 입력하지 않으셨습니다.@str_txt",
                 "mem_in;DEE;dues closed;" + first + ";2025 20 50000 20000 0 2026 10 10000 10000 0 ;10 ",
                 "mem_ud;EE;dues closed;" + first + ";2025 20 20000 -10000 0 ;20 ", // the mark stays
                 "mem_del;E;closed", "mem_del;TE;dues closed;;;20 "}) {
            at_console at;
            at.open(row.section(u';', 0, 0));
            if (row.contains(half))
                at.say.will_answer(half, answer::second);
            QCOMPARE(at.press(row.section(u';', 1, 1)), row.section(u';', 2, 2).remove(half));
            QCOMPARE(at.stored(), row.count(u';') > 2 ? row.section(u';', 3) : before);
            QCOMPARE(at.db.number("select count(*) as n from dues_b_tbl where code_member=10"), 0);
        }
    }
    void what_is_there_is_shown() // dialog; year; keys; controls; what they show
    {
        at_console at;
        at.db.direct("update dues_h_tbl set yet_money=-5000");
        a_dues_year{at.kim, "2024"}.with("yet_money", 3'000'000'000).store_in(at.db);
        for (const QString row :
             {"dues_in;2025;D;con_in_y_cbb con_in_d_cbb b_in_y_cbb b_in_d_cbb;2025  - -",
              "dues_in;2025;;str_txt hint b_in_m_cbb;-5,000 이 년도의 회비는 5,000원이 더 납입되어 있습니다. "
              "그대로 저장하면 돌려준 금액으로 기록됩니다. -",
              "dues_in;2024;;str_txt;3,000,000,000",
              "dues_in;;;str_txt hint; 회비년도를 선택하지 않았습니다. 입금은 년도 없이 저장됩니다.",
              "dues_ud;2025;;con_in_m_cbb b_in_m_cbb str_txt;03 03- 30,000",
              "mem_ud;;;hint Image1;이 년도의 회비가 등록되어 있지 않습니다. -",
              "dues_del;2025;;what_goes;본회입금일 2025-03-15\n지회입금일 2025-03-15\n입금액 30,000원",
              "mem_del;2025;;whose what_goes;김영희 (900101)  ·  2025년 총회비 50,000원, 미수금 -5,000원\n"
              "입금 1건, 합계 30,000원"}) {
            at.c.cur_val_year = row.section(u';', 1, 1);
            at.open(row.section(u';', 0, 0));
            at.press(row.section(u';', 2, 2));
            QCOMPARE(at.shown(row.section(u';', 3, 3)), row.section(u';', 4));
        }
    }
    void what_is_stored_oddly_stays_as_it_is() // keys; the line then
    {
        for (const QString row : {"EEEEE;19990315 2025031 -30000 1 ", "DEEEEE; 2025031 -30000 2 ",
                                  "E2000EEEE;20000315 2025031 -30000 1 "}) {
            at_console at;
            at.db.direct("update dues_b_tbl set pers_mem_day='19990315',pers_mem_b_day='2025031',"
                         "pres_money=-30000");
            at.open("dues_ud");
            QCOMPARE(at.press(row.section(u';', 0, 0)), "dues lines closed");
            QCOMPARE(at.stored().section(u';', 0, 0), row.section(u';', 1));
        }
    }
    void a_broken_save_goes_on_without_a_second_payment()
    {
        at_console at;
        at.open("dues_in");
        at.db.direct("alter table dues_b_tbl rename to away");
        QCOMPARE(at.press("DE+EE"), "@str_txt");
        QCOMPARE(at.say.take_notes(), QStringList{"오류가 발생하여 저장하지 않았습니다."});
        at.db.direct("alter table away rename to dues_b_tbl");
        at.db.direct("create trigger broken before update on dues_h_tbl begin select raise(abort,'x'); end");
        at.say.will_answer("작업을 마치지 못했습니다.\n\nx\n\n저장된 것: 회비 입금\n저장하지 못한 것: 미수금",
                           answer::second);
        QCOMPARE(at.press("E"), "@Image1");
        QCOMPARE(at.shown("str_txt"), "20,000-");
        at.db.direct("drop trigger broken");
        QCOMPARE(at.press("E"), "dues lines closed");
        QCOMPARE(at.stored(), first + "20261122  20000 1 ;2025 20 50000 0 1 ;20 ");
    }
};
ORVO_SCREEN_TESTS(dues_dialogs_test)
#include "dues_dialogs_test.moc"
