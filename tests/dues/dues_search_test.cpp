#include "dues/search/dues_search_dlg.h"
#include "support/builders.h"
#include "support/engines.h"
#include "support/fake_desk.h"
#include "support/screens.h"
#include "support/test_register.h"
using namespace orvo;
class dues_search_test : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void members_are_found_by_their_dues_data() { engines_under_test(); }
    void members_are_found_by_their_dues()
    {
        FETCH_ENGINE(kind);
        running_client on{kind};
        fake_desk desk;
        for (const auto& [name, branch] : {std::pair{"1", 10}, {"2", 20}, {"3", 0}})
            a_member{name}.of_branch(branch).store_in(on.c.db_conn);
        on.c.db_conn.direct(
            "insert into dues_h_tbl(pers_no,val_year,regi_date,incom_flag) values "
            "('1','2026','20261122','1'),"
            "('1','2020','20261120','1'),('1','2021','20261119','0'),('2','2026','20261122','1'),"
            "('2','2025','20261231','0'),('3','2026','20261122','1')");
        a_member{"earlier"}.store_in(on.c.local_conn);
        const QString nobody = "찾으시는 회원이 없습니다.@yet_cbb";
        for (const QStringList& row :
             QList<QStringList>{// branch; keys; said, and the field of the dialog; the copy then
                                {"0", "E20271231EEEEEE", nobody, "earlier"}, // begins behind its end
                                {"0", "EEEEXEEE", "회비 납입기간과 납입여부를 입력하세요@m2_cbb", "earlier"},
                                {"0", "EEEEEEE", "", "1 2 3"},
                                {"0", "E20261120EEEEEE", "", "1 1 2 3"}, // two years, twice in the list
                                {"0", "20261119EEE20261231EEEDE", "", "1 2"},
                                {"10", "20261101EEEEEEE", "", "1 1"}, // without those of no branch
                                {"30", "20261101EEEEEEE", nobody, "1 1"},
                                {"10 A", "20261101EEEEEEE", nobody, "1 1"}}) {
            on.c.session_branch = row[0];
            dues_search_dlg dlg{on.c, desk, nullptr};
            bring_up(dlg);
            press_keys(dlg, row[1]);
            const QString field = dlg.isVisible() ? '@' + dlg.focusWidget()->objectName() : QString{};
            QCOMPARE(on.say.take_texts().join(u'|') + field, row[2]);
            QCOMPARE(std::exchange(desk.shown, {}).size(), field.isEmpty() ? 1 : 0);
            QStringList copied;
            for (const auto found : on.c.local_conn.read("select pers_no from person_m_tbl"))
                copied += found.text("pers_no");
            QCOMPARE(copied.join(u' '), row[3]);
        }
    }
};
ORVO_SCREEN_TESTS(dues_search_test)
#include "dues_search_test.moc"
