#include "dues/pledges/pledge_dialogs.h"
#include "support/builders.h"
#include "support/engines.h"
#include "support/fake_desk.h"
#include "support/screens.h"
#include "support/test_register.h"
#include "ui/member_panels.h"
using namespace orvo;
const QString kim = "9001011234568";
QString stored(connection& db)
{
    QString all;
    for (const auto row : db.read("select * from contract"))
        all += row.text("con_amount") + ' ' + row.text("con_money") + ' ' + row.text("con_finish");
    for (const auto row : db.read("select * from contract_list where pers_no<>'another'"))
        all += "|" + row.text("con_day") + ' ' + row.text("con_date") + ' ' + row.text("con_money");
    return all;
}
/// The pledge is given up and its sum wrong; of two instalments of one day the second is chosen.
struct at_console : running_client, fake_desk, member_panels {
    int refreshed = 0;
    std::unique_ptr<QDialog> dlg;
    connection& db = c.db_conn;
    at_console(engine kind, bool is_pledged) : running_client{kind}, member_panels{static_cast<desk&>(*this)}
    {
        c.selected_pers_no = kim;
        c.cur_con_date = "20260315";
        if (is_pledged)
            store_pledge();
    }
    void store_pledge()
    {
        a_pledge{kim, "20200101", 900}.with("con_finish", 1).with("con_money", 999).store_in(db);
        db.direct("insert into contract_list(con_day,con_date,pers_no,con_money) values "
                  "('20200101','20260315','9001011234568',300),('20200101','20260315','9001011234568',20),"
                  "('20200101','20260315','another',5)");
        c.cur_con_day = "20'6";
    }
    void show_dues() override {}
    void show_dues_lines() override {}
    void show_contract() override { ++refreshed; }
    void show_company() override {}
    at_console& open(const QString& name)
    {
        c.cur_con_id = name.endsWith('1') ? "1" : "2";
        name == "con_in"            ? dlg = std::make_unique<con_in_dlg>(c, *this, nullptr)
        : name.startsWith("con_ud") ? dlg = std::make_unique<con_ud_dlg>(c, *this, nullptr)
                                    : dlg = std::make_unique<con_del_dlg>(c, *this, nullptr);
        bring_up(*dlg);
        return *this;
    }
    QString shown(const char* name) { return shown_by(control<QObject>(*dlg, name)); }
    /// What was said and where the focus is, or how often
    ///  the console was refreshed behind the closed dialog.
    QString press(const QString& keys)
    {
        press_keys(*dlg, keys);
        return say.take_texts().join(u'|') + '@' +
               (dlg->isVisible() ? dlg->focusWidget()->objectName() : QString::number(refreshed));
    }
};
const QString first = "|20200101 20260315 300", second = "|20200101 20260315 20";
class pledges_test : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void keys_alone_store_or_are_refused_data() { engines_under_test(); }
    void keys_alone_store_or_are_refused() // dialog and keys, ...; said and done; stored, if it changed
    {
        FETCH_ENGINE(kind);
        const QString none = "금액 및 날짜를 입력하지 않으셨습니다.@", both = first + second;
        for (const QString& row : QStringList{
                 "con_in 900E20300101EEE;@1;900 0 0", // the first entry is the pledge; the second finds it
                 "con_in 900EEEE,con_in 500EEEE;@2;900 500 0|20261122 20261122 500",
                 "con_in 50EEEE;@1;900 370 1" + both + "|20'6 20261122 50",
                 "con_in 2147483647E19700101EEE;@1;900 2147483967 1" + both + "|20'6 19700101 2147483647",
                 "con_in EEEE;" + none + "str_txt", "con_in 5EEXEE;" + none + "con_in_m_cbb",
                 "con_in -5EEEE;@1;900 315 1" + both + "|20'6 20261122 -5",
                 "con_ud1 -70EEEEE,con_ud1 E2025EEEE;@2;900 -50 0|20200101 20250315 -70" + second,
                 "con_in 5E1969EEE;연도는 1970부터 2050까지 입력할 수 있습니다.@con_in_y_cbb",
                 "con_ud EEEEE;@1;900 600 0" + first + first, // shows the first, writes the second
                 "con_ud 70EEEEDE,con_in 5EEEE;@2;900 375 1" + first +
                     "|20200101 20260315 70|20'6 20261122 5",
                 "con_ud 70EEEXEE;" + none + "con_in_d_cbb", "con_del E;@0",
                 "con_del TE;@1;900 300 1" + first, "con_del TE,con_del1 TE;@2;900 0 1"}) {
            at_console at{kind, !row.startsWith("con_in 900")};
            QString outcome;
            for (const QString& step : row.section(u';', 0, 0).split(u','))
                outcome = at.open(step.section(u' ', 0, 0)).press(step.section(u' ', 1));
            QCOMPARE(outcome, row.section(u';', 1, 1));
            QCOMPARE(stored(at.db), row.count(u';') > 1 ? row.section(u';', 2) : "900 999 1" + both);
        }
    }
    void what_is_there_is_said()
    {
        at_console at{engine::embedded, false};
        QCOMPARE(at.open("con_in").press("-5EEEE"), // the sum pledged
                 "금액에는 빼기 기호(-)를 쓸 수 없으니 0원 이상으로 입력하세요.@str_txt");
        QVERIFY(at.open("con_in").shown("hint").contains("오늘(2026-11-22) 약정한"));
        at.store_pledge(); // meanwhile
        QCOMPARE(at.press("5EEEE"),
                 "그 사이에 약정이 등록되었습니다. 입금으로 저장하려면 다시 누르세요.@str_txt");
        QCOMPARE(at.open("con_ud").shown("state"), "현재 상태: 포기");
        QVERIFY(at.shown("hint").contains("선택한 내역은 현재 20원"));
        QCOMPARE(at.open("con_del").shown("what_goes"), "입금일 2026-03-15\n입금액 20원");
        at.db.direct("delete from contract_list where con_id=2");
        QVERIFY(!control<QWidget>(*at.open("con_ud").dlg, "Image1").isEnabled());
    }
    void a_broken_save_goes_on_without_a_second_instalment()
    {
        at_console at{engine::embedded, true};
        at.db.direct("create trigger broken before update on contract begin select raise(abort,'x'); end");
        at.say.will_answer(
            "작업을 마치지 못했습니다.\n\nx\n\n저장된 것: 약정 입금\n저장하지 못한 것: 총입금액",
            answer::second);
        QCOMPARE(at.open("con_in").press("50EEEE"), "@Image1");
        at.db.direct("drop trigger broken");
        QCOMPARE(at.press("E"), "@1");
        QCOMPARE(stored(at.db), "900 370 1" + first + second + "|20'6 20261122 50");
    }
};
ORVO_SCREEN_TESTS(pledges_test)
#include "pledges_test.moc"
