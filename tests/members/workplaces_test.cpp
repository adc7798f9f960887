#include "members/screens/workplace_dialogs.h"
#include "support/builders.h"
#include "support/engines.h"
#include "support/fake_desk.h"
#include "support/screens.h"
#include "support/test_register.h"
#include "ui/controls.h"
#include "ui/grid.h"
#include "ui/member_panels.h"

#include "hands/hands.h"

#include <QLabel>
#include <QTest>

using namespace orvo;

namespace {

const QString number = QStringLiteral("9001011234568");
const QString other_number = QStringLiteral("8001011234568");

class counting_panels : public member_panels {
public:
    using member_panels::member_panels;
    void show_dues() override {}
    void show_dues_lines() override {}
    void show_contract() override {}
    void show_company() override { ++refreshed; }
    int refreshed = 0;
};

/// A member with two workplaces, the first of them primary, and another's with everything to copy.
struct at_workplaces {
    explicit at_workplaces(engine kind = engine::embedded) : on{kind}
    {
        connection& local = on.c.local_conn;
        const auto code = [&](const char* table, const char* key, int value, const char* column,
                              const char* name) {
            a_row row{table, database::local};
            row.with(key, value).with(column, name);
            if (QLatin1String{table} == QLatin1String{"great_division"})
                row.with("code_part", 100);
            row.store_in(local);
        };
        code("great_division", "code_great", 10, "great_name", "학교급식");
        code("make_use_of", "code_use", 1, "use_name", "직영");
        connection& db = on.c.db_conn;
        first = QString::number(a_workplace{number}
                                    .of_division(100, 10, 77)
                                    .with("pers_out_date", "202301")
                                    .with("company_tel", "031")
                                    .with("regi_date", "20200101")
                                    .store_in(db));
        second = QString::number(a_workplace{number}.named("둘째").former().store_in(db));
        others = QString::number(a_workplace{other_number}
                                     .named("남의 '직장'")
                                     .of_division(100, 10, 3)
                                     .with("company_fax", "0312345678")
                                     .with("company_midday", 1200)
                                     .with("pers_out_date", "202305")
                                     .with("code_use", 1)
                                     .store_in(db));
        on.c.selected_pers_no = number;
        on.c.comp_ud_caller = "1";
        on.c.cur_company_id = first;
    }

    template <typename dialog_of>
    std::unique_ptr<dialog_of> open(qint16 code)
    {
        on.c.current_screen = code;
        auto dlg = std::make_unique<dialog_of>(on.c, desk, nullptr);
        bring_up(*dlg);
        return dlg;
    }
    QString stored(const QString& company_id, const char* column)
    {
        const rows found =
            on.c.db_conn.read("select * from company where company_id='{id}'", {{"id", company_id}});
        return found.empty() ? QStringLiteral("gone") : found.front().text(column);
    }
    QString newest(const char* column)
    {
        return stored(QString::number(on.c.db_conn.number("select max(company_id) as id from company")),
                      column);
    }

    running_client on;
    fake_desk desk;
    counting_panels panels{desk};
    QString first, second, others;
};

void write(QWidget& in, const char* field, const QString& text)
{
    auto& line = control<QLineEdit>(in, field);
    line.clear();
    type(&line, text);
}

void pick(QWidget& in, const char* list, const QString& text)
{
    control<QComboBox>(in, list).setCurrentText(text);
}

void press_button(QWidget& in, const char* name)
{
    click(&control<QPushButton>(in, name));
}

} // namespace

class workplaces_test : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void a_new_one_is_copied_from_anothers_data() { engines_under_test(); }
    void a_new_one_is_copied_from_anothers()
    {
        FETCH_ENGINE(kind);
        at_workplaces at{kind};
        auto dlg = at.open<comp_in_dlg>(screen_code::comp_in_dlg);
        press_button(*dlg, "search_img");
        write(*dlg, "str_txt", "'직");
        press(&control<QLineEdit>(*dlg, "str_txt"), Qt::Key_Return);
        auto& found = control<grid>(*dlg, "com_lst");
        QCOMPARE(found.filled_rows(), 1);
        click_row(&found, 1);
        QCOMPARE(at.on.say.take_texts(),
                 (QStringList{"검색할 회사명을 입력하여 주세요.", "없는행을 선택하였습니다."}));
        control<QComboBox>(*dlg, "use_cbb").clear(); // a look-up has left nothing there
        click_row(&found, 0);
        QCOMPARE(shown_by(control<QComboBox>(*dlg, "use_cbb")), "직영");
        QCOMPARE(shown_by(control<QLineEdit>(*dlg, "fax2_txt")), "123"); // not 234: another's number
        QCOMPARE(shown_by(control<QWidget>(*dlg, "out_m_cbb")) +
                     shown_by(control<QWidget>(*dlg, "emp_y_cbb")),
                 "05");
        write(*dlg, "com_name_txt", "옮긴 '직장'");
        pick(*dlg, "primary_cbb", "예");
        press_button(*dlg, "submit_img");
        QCOMPARE(at.on.say.take_texts(), QStringList{"입력이 완료됬습니다."});
        QCOMPARE(at.newest("company_name") + at.newest("pers_no") + at.newest("company_midday"),
                 "옮긴 '직장'" + number + "1200");
        QCOMPARE(at.newest("company_fax") + u' ' + at.newest("pers_out_date") + u' ' + at.newest("regi_date"),
                 "031031031 202305 20261122");
        QCOMPARE(at.newest("primary_flag") + at.stored(at.first, "primary_flag") +
                     at.stored(at.others, "primary_flag"),
                 "101"); // another member's stays
        QCOMPARE(at.panels.refreshed, 1);
        dlg.reset();
        QCOMPARE(at.on.c.current_screen, screen_code::manager_main_frm);
    }

    void without_a_name_nothing_is_stored()
    {
        at_workplaces at;
        const qint64 before = at.on.c.db_conn.number("select count(*) as n from company");
        auto in = at.open<comp_in_dlg>(screen_code::comp_in_dlg);
        const auto says = [](QWidget& dlg, const char* line) {
            return !shown_by(control<QLabel>(dlg, line)).isEmpty();
        };
        QVERIFY(says(*in, "no_name") && !says(*in, "one_fax"));
        write(*in, "fax2_txt", "555");
        QVERIFY(says(*in, "one_fax"));
        press_button(*in, "submit_img");
        auto ud = at.open<comp_ud_dlg>(screen_code::comp_ud_dlg);
        QVERIFY(!says(*ud, "no_name"));
        write(*ud, "com_name_txt", "");
        QVERIFY(says(*ud, "no_name") && !ud->findChild<QLabel*>("one_fax"));
        press_button(*ud, "submit_img");
        QCOMPARE(at.on.say.take_texts(), (QStringList{"근무처명을 입력하세요", "입력이 완료됬습니다.",
                                                      "근무처명을 입력하세요", "수정 완료됬습니다."}));
        QCOMPARE(at.on.c.db_conn.number("select count(*) as n from company"), before);
        QCOMPARE(at.stored(at.first, "regi_date"), "20200101");
    }

    void a_change_keeps_what_no_list_shows_data() { engines_under_test(); }
    void a_change_keeps_what_no_list_shows()
    {
        FETCH_ENGINE(kind);
        at_workplaces at{kind};
        auto dlg = at.open<comp_ud_dlg>(screen_code::comp_ud_dlg);
        QCOMPARE(shown_by(control<QWidget>(*dlg, "out_y_cbb")) +
                     shown_by(control<QWidget>(*dlg, "out_m_cbb")),
                 "2023");
        for (const auto& [field, text] :
             {std::pair{"fax1_txt", "02"}, {"fax2_txt", "555"}, {"fax3_txt", "1234"}})
            write(*dlg, field, text);
        press_button(*dlg, "submit_img");
        QCOMPARE(at.stored(at.first, "company_fax") + u' ' + at.stored(at.first, "pers_out_date") + u' ' +
                     at.stored(at.first, "code_small") + u' ' + at.stored(at.first, "company_tel") + u' ' +
                     at.stored(at.first, "pers_in_date"),
                 "025551234 202301 77 031 202003");
        at.on.c.cur_company_id = at.second;
        dlg = at.open<comp_ud_dlg>(screen_code::comp_ud_dlg);
        pick(*dlg, "primary_cbb", "예");
        press_button(*dlg, "submit_img");
        QCOMPARE(at.stored(at.first, "primary_flag") + at.stored(at.second, "primary_flag"), "01");
        dlg.reset();
        QCOMPARE(at.on.c.current_screen, screen_code::manager_main_frm);
        QCOMPARE(at.panels.refreshed, 2);
        // Opened from the hygiene education list, it leaves the panels alone, and the code to that screen.
        at.on.c.comp_ud_caller = "2";
        dlg = at.open<comp_ud_dlg>(screen_code::sup_all_ud_dlg);
        QCOMPARE(at.desk.target(at.on.c.current_screen), dlg.get()); // its pickers find it
        press_button(*dlg, "submit_img");
        dlg.reset();
        QCOMPARE(at.on.c.current_screen, screen_code::sup_all_ud_dlg);
        QCOMPARE(at.panels.refreshed, 2);
    }

    void what_the_register_refuses_can_be_mended()
    {
        at_workplaces at;
        auto dlg = at.open<comp_in_dlg>(screen_code::comp_in_dlg);
        write(*dlg, "com_name_txt", "새 직장");
        pick(*dlg, "primary_cbb", "예");
        control<QComboBox>(*dlg, "primary_cbb").setFocus();
        press(dlg->focusWidget(), Qt::Key_Return);
        QCOMPARE(dlg->focusWidget()->objectName(), "submit_img");
        at.on.c.db_conn.direct(
            "create trigger narrow before insert on company begin select raise(abort,'좁다'); end");
        at.on.say.will_answer("작업을 마치지 못했습니다.\n\n좁다\n\n저장된 것: 다른 근무처의 우선 "
                              "표시\n저장하지 못한 것: 근무처",
                              answer::second);
        press_button(*dlg, "submit_img");
        QVERIFY(control<QLineEdit>(*dlg, "com_name_txt").isEnabled());
        QVERIFY(
            !control<QComboBox>(*dlg, "primary_cbb").isEnabled()); // the others have lost their mark to it
        at.on.c.db_conn.direct("drop trigger narrow");
        press_button(*dlg, "submit_img");
        QCOMPARE(at.newest("company_name") + at.newest("primary_flag") + at.stored(at.first, "primary_flag"),
                 "새 직장10");
        at.on.c.db_conn.direct("alter table company rename to gone");
        at.on.say.will_answer("작업을 마치지 못했습니다.\n\nno such table: company", answer::second);
        QVERIFY(
            !control<QPushButton>(*at.open<comp_ud_dlg>(screen_code::comp_ud_dlg), "submit_img").isEnabled());
    }

    void a_deletion_promotes_nobody()
    {
        at_workplaces at;
        press_button(*at.open<comp_del_dlg>(screen_code::manager_main_frm), "Image2");
        QCOMPARE(at.stored(at.first, "primary_flag"), "1");
        press_button(*at.open<comp_del_dlg>(screen_code::manager_main_frm), "Image1");
        QCOMPARE(at.stored(at.first, "pers_no") + at.stored(at.second, "primary_flag"), "gone0");
        QCOMPARE(at.panels.refreshed, 1);
        const auto gone =
            QStringLiteral("작업을 마치지 못했습니다.\n\n이 근무처는 다른 곳에서 삭제되었습니다.");
        at.on.say.will_answer(gone, answer::second);
        const auto dlg = at.open<comp_ud_dlg>(screen_code::comp_ud_dlg);
        QVERIFY(!control<QPushButton>(*dlg, "submit_img").isEnabled());
    }
};

ORVO_SCREEN_TESTS(workplaces_test)
#include "workplaces_test.moc"
