#include "members/rules/member_update.h"
#include "members/screens/manager_main_frm.h"
#include "support/builders.h"
#include "support/engines.h"
#include "support/fake_desk.h"
#include "support/screens.h"
#include "support/test_register.h"
#include "ui/grid.h"

#include "hands/hands.h"

#include <QApplication>
#include <QComboBox>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QTest>
#include <QTimer>

using namespace orvo;

namespace {

const QString number = QString{"9001011234568"};
const QString other_number = QString{"9001021234561"};
const QStringList done{"수정이 완료됬습니다."};

/// The console on a member of everything; his home telephone has a length that no form shows.
struct at_console {
    explicit at_console(engine kind = engine::embedded) : on{kind}
    {
        connection& db = on.c.db_conn;
        connection& local = on.c.local_conn;
        a_row{"branch_code", database::local}
            .with("code_bran", 10)
            .with("branch_name", "서울")
            .store_in(local);
        a_row{"branch_code", database::local}
            .with("code_bran", 20)
            .with("branch_name", "부산")
            .store_in(local);
        a_row{"big_division", database::local}.with("code_big", 3).with("big_name", "학교").store_in(local);
        for (connection* each : {&db, &local})
            a_member{number}
                .with("code_big", 3)
                .with("pers_tel", "021234567890")
                .with("pers_career", "07")
                .with("code_school", 77)
                .with("code_sect", 5)
                .with("pers_marry", "미혼")
                .with("get_mail_place", "직장")
                .store_in(*each);
        a_row{"money_member"}.with("code_member", 20).with("mem_kind", "정회원").store_in(db);
        a_dues_year{number, "2025", 30'000}.store_in(db);
        a_payment{number, "2025", 10'000}.store_in(db);
        a_pledge{number, "20250601"}.store_in(db);
        a_row{"contract_list"}.with("pers_no", number).with("con_date", "20250701").store_in(db);
        a_workplace{number}.store_in(db);
        for (const char* table : {"std_h_tbl", "std_b_tbl", "have_lic_tbl", "supplement"})
            a_row{table}.with("pers_no", number).store_in(db);
        open();
    }

    void open()
    {
        screen.reset();
        screen = std::make_unique<manager_main_frm>(on.c, desk, nullptr);
        bring_up(*screen, 1366, 650);
    }
    void open_member() { click_row(&control<QListWidget>(*screen, "custom_lst"), 0); }
    void press_button(const char* name) { click(&control<QPushButton>(*screen, name)); }
    void write(const char* field, const QString& text)
    {
        auto& line = control<QLineEdit>(*screen, field);
        line.clear();
        type(&line, text);
    }
    QString stored(connection& in, const char* table, const char* column)
    {
        QStringList all;
        for (const auto row : in.read(std::string{"select * from "} + table))
            all.append(row.text(column));
        return all.join(u' ');
    }
    QString stored(const char* table, const char* column) { return stored(on.c.db_conn, table, column); }

    running_client on;
    fake_desk desk;
    std::unique_ptr<manager_main_frm> screen;
};

/// Presses a button of the dialog that is about to open.
void press_in_dialog(const char* name)
{
    QTimer::singleShot(0, qApp,
                       [name] { click(&control<QPushButton>(*QApplication::activeModalWidget(), name)); });
}

} // namespace

class member_update_test : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void a_corrected_number_walks_through_the_tables_data() { engines_under_test(); }
    void a_corrected_number_walks_through_the_tables()
    {
        FETCH_ENGINE(kind);
        at_console at{kind};
        at.open_member();
        at.write("name_txt", "오'영희");
        const auto says_what_stays_behind = [&at] {
            return !shown_by(control<QWidget>(*at.screen, "number_line")).isEmpty();
        };
        QVERIFY(!says_what_stays_behind());
        at.write("pers_no1_txt", "900102");
        QVERIFY(says_what_stays_behind());
        at.write("pers_no2_txt", "1234561");
        control<QComboBox>(*at.screen, "bran_cbb").setCurrentIndex(1);
        at.write("id_txt", "o'kim");
        at.press_button("cmd_edit");
        QCOMPARE(at.on.say.take_texts(), done);
        for (const char* table :
             {"person_m_tbl", "dues_h_tbl", "dues_b_tbl", "contract", "contract_list", "company"})
            QCOMPARE(at.stored(table, "pers_no"), other_number);
        // What was earned stays under the number that it was earned with.
        for (const char* table : {"std_h_tbl", "std_b_tbl", "have_lic_tbl", "supplement"})
            QCOMPARE(at.stored(table, "pers_no"), number);
        QCOMPARE(at.stored("supplement", "code_bran"), "20");
        QCOMPARE(at.stored("id_tbl where id='o''kim'", "pers_no"), number);
        for (connection* each : {&at.on.c.db_conn, &at.on.c.local_conn})
            QCOMPARE(at.stored(*each, "person_m_tbl", "pers_name") +
                         at.stored(*each, "person_m_tbl", "code_bran") +
                         at.stored(*each, "person_m_tbl", "regi_date"),
                     "오'영희2020261122");
        QCOMPARE(at.on.c.selected_pers_no, other_number); // and he stands open under it
        QVERIFY(!says_what_stays_behind());
        QCOMPARE(control<QListWidget>(*at.screen, "custom_lst").currentItem()->text(), "오'영희");
    }

    void what_cannot_be_shown_is_stored_as_it_was()
    {
        at_console at;
        const auto stored = [&] {
            QStringList all;
            for (const char* column : {"pers_tel", "code_school", "pers_career", "pers_sex"})
                all.append(at.stored("person_m_tbl", column));
            return all.join(u' ');
        };
        at.open_member();
        at.write("addr_txt", "새 주소");
        at.press_button("cmd_edit");
        QCOMPARE(at.on.say.take_texts(), done);
        QCOMPARE(stored() + at.stored("person_m_tbl", "code_sect"), "021234567890 77 07 25");
        control<QComboBox>(*at.screen, "bran_cbb").setCurrentIndex(1); // where 5 is another's number
        at.press_button("cmd_edit");
        QCOMPARE(at.on.say.take_texts() + QStringList{at.stored("person_m_tbl", "code_sect")},
                 done + QStringList{"0"});
        at.write("tel2_txt", "555"); // touched, and not whole
        at.press_button("cmd_edit");
        QCOMPARE(at.on.say.take_texts(), QStringList{"집 전화번호를 입력하여 주세요"});
        at.write("tel3_txt", "1234");
        at.press_button("cmd_edit");
        QCOMPARE(at.on.say.take_texts(), done);
        QCOMPARE(stored(), "025551234 77 07 2");
    }

    void a_branch_is_asked_before_a_member_leaves_it()
    {
        const QString question =
            "이 회원을 부산(으)로 옮기면 다음 검색부터 이 지부의 목록에 나오지 않고, 다시 "
            "옮기는 것은 그 지부나 본회에서만 할 수 있습니다.\n\n옮기시겠습니까?";
        // Whose change it is, whether he is asked, his answer, and the branch and sub-branch that are stored.
        const std::tuple<const char*, bool, answer, const char*> changes[] = {
            {"10", true, answer::second, "105"},  {"10", true, answer::first, "200"},
            {"010", true, answer::second, "105"}, {"30", true, answer::second, "105"},
            {"20", false, answer::second, "200"}, {"0", false, answer::second, "200"}};
        for (const auto& [branch, is_asked, way, stored] : changes) {
            at_console at;
            a_row section{"section_code", database::local};
            section.with("code_bran", 10)
                .with("code_big", 3)
                .with("code_sect", 5)
                .with("section_name", "강남");
            section.store_in(at.on.c.local_conn);
            at.on.c.session_branch = branch;
            at.open_member();
            QCOMPARE(shown_by(control<QComboBox>(*at.screen, "sect_cbb")), "강남");
            at.press_button("cmd_edit"); // he stays where he is
            QCOMPARE(at.on.say.take_texts(), done);
            control<QComboBox>(*at.screen, "bran_cbb").setCurrentIndex(1);
            QCOMPARE(shown_by(control<QComboBox>(*at.screen, "sect_cbb")), "");
            if (is_asked)
                at.on.say.will_answer(question, way);
            at.press_button("cmd_edit");
            QCOMPARE(at.stored("person_m_tbl", "code_bran") + at.stored("person_m_tbl", "code_sect"), stored);
        }
    }

    void career_is_stored_by_what_is_chosen()
    {
        for (const auto& [years, months, stored] :
             {std::tuple{"03", "07", "0307"}, {"", "07", "07"}, {"03", "", "03"}, {"", "", "0"}}) {
            member_data typed;
            typed.career_years = years;
            typed.career_months = months;
            for (const column_value& each : edited_columns(typed, "20261122"))
                if (each.column == "pers_career")
                    QCOMPARE(each.value, QString{stored});
        }
    }

    void a_newer_change_is_laid_before_the_operator_data()
    {
        QTest::addColumn<QString>("button");
        QTest::addColumn<QString>("stored");
        QTest::newRow("mine") << "mine_img"
                              << "내 주소";
        QTest::newRow("the server's") << "servers_img"
                                      << "남의 주소new";
        QTest::newRow("neither") << "Image2"
                                 << "남의 주소new";
    }
    void a_newer_change_is_laid_before_the_operator()
    {
        QFETCH(QString, button);
        at_console at;
        at.open_member();
        at.write("addr_txt", "내 주소");
        at.on.c.db_conn.write(
            "update person_m_tbl set pers_add='남의 주소',regi_date='20261121',code_member='30'");
        at.on.c.db_conn.write("update id_tbl set passwd='new'"); // by the member himself
        QByteArray name = button.toLatin1();
        press_in_dialog(name.constData());
        at.press_button("cmd_edit");
        QTEST(at.stored("person_m_tbl", "pers_add") + at.stored("id_tbl", "passwd"), "stored");
        QCOMPARE(at.on.say.take_texts(), button == "mine_img" ? done : QStringList{});
        QCOMPARE(shown_by(control<QLineEdit>(*at.screen, "addr_txt")),
                 button == "servers_img" ? QStringLiteral("남의 주소") : QStringLiteral("내 주소"));
        at.on.c.db_conn.write("delete person_m_tbl where pers_no='{number}'", {{"number", number}});
        at.press_button("cmd_edit");
        QVERIFY(at.on.say.take_texts().value(0).startsWith("이 회원은 다른 곳에서 삭제되었거나"));
    }

    void a_broken_change_of_number_is_finished_under_either()
    {
        at_console at;
        at.open_member();
        at.write("pers_no1_txt", "900102");
        at.write("pers_no2_txt", "1234561");
        at.on.c.db_conn.direct("alter table contract rename to gone");
        at.on.say.will_answer(
            "작업을 마치지 못했습니다.\n\nno such table: contract\n\n저장된 것: 회원 정보, 이 PC의 검색 "
            "결과, 웹 아이디, 회비 년도, 회비 입금\n저장하지 못한 것: 약정",
            answer::second);
        at.press_button("cmd_edit");
        at.on.c.db_conn.direct("alter table gone rename to contract");
        at.open_member(); // whom the list has under the new number already
        QCOMPARE(at.on.c.selected_pers_no, other_number);
        at.on.say.will_answer(
            "앞서 이 회원을 저장하다가 중단되었습니다.\n저장된 것: 회원 정보, 이 PC의 검색 결과, 웹 "
            "아이디, 회비 년도, 회비 입금\n\n그때의 내용으로 나머지를 이어서 저장할까요?",
            answer::first);
        at.press_button("cmd_edit");
        QCOMPARE(at.on.say.take_texts(), done);
        for (const char* table : {"dues_h_tbl", "dues_b_tbl", "contract", "contract_list", "company"})
            QCOMPARE(at.stored(table, "pers_no"), other_number);
    }

    void a_number_that_another_has_changes_nothing()
    {
        at_console at;
        a_member{other_number}.store_in(at.on.c.db_conn);
        at.on.c.db_conn.write("update person_m_tbl set pers_name='먼저' where pers_no='{other}'",
                              {{"other", other_number}});
        member_data typed;
        typed.pers_no1 = other_number.left(6);
        typed.pers_no2 = other_number.right(7);
        save edit = at.on.c.begin(change_member(number, edited_columns(typed, "20261122"), {}, {}, {}));
        QVERIFY_EXCEPTION_THROWN(edit.carry_out(), db_failure);
        QVERIFY(!edit.is_begun() && at.on.c.saves.unfinished().empty());
        QCOMPARE(at.stored("person_m_tbl order by pers_no", "pers_name"), "김영희 먼저");
        QCOMPARE(at.stored("dues_h_tbl", "pers_no"), number);
    }

    void a_deletion_names_what_goes_and_leaves_the_pledge()
    {
        at_console at;
        const QString question = "선택된 회원을 삭제 하시겠습니까?";
        at.on.say.will_answer(question, answer::first);
        at.on.c.selected_pers_no = number; // of whom an earlier console showed
        at.press_button("cmd_del");
        QCOMPARE(at.on.say.take_texts(), QStringList{"삭제하실 회원을 서택 하여주세요"});
        at.open_member();
        for (const answer way : {answer::second, answer::first}) {
            at.on.say.will_answer(question, way);
            at.press_button("cmd_del");
            const QString left = way == answer::first ? QString{} : number;
            for (const char* table : {"person_m_tbl", "company", "dues_h_tbl", "dues_b_tbl", "std_h_tbl",
                                      "std_b_tbl", "supplement", "have_lic_tbl", "id_tbl"})
                QCOMPARE(at.stored(table, "pers_no"), left);
        }
        QCOMPARE(at.on.say.take_texts(), QStringList{"삭제가 완료 되었습니다."});
        QVERIFY(at.on.say.asked_about().contains("회원 1건, 근무처 1건, 회비 년도 1건, 회비 입금 1건, "));
        for (const char* table : {"contract", "contract_list"})
            QCOMPARE(at.stored(table, "pers_no"), number);
        QCOMPARE(at.stored(at.on.c.local_conn, "person_m_tbl", "pers_no"), number);
        QCOMPARE(at.desk.asked, QStringList{"search_dlg"});
    }

    void the_panels_open_their_dialogs()
    {
        at_console at;
        const auto told = [&](const char* name) {
            at.press_button(name);
            return at.on.say.take_texts().join(u'|') + at.desk.opened_above.join(u'|');
        };
        for (const char* name : {"mem_in_img", "dues_in_img", "comp_in_img", "con_in_img"})
            QCOMPARE(told(name), "추가할 사람을 선택 하지 않았습니다.");
        for (const char* name : {"mem_ud_img", "dues_ud_img", "comp_ud_img", "comp_del_img", "con_ud_img"})
            QVERIFY(told(name).startsWith("수정할 행에"));
        for (const char* name : {"dues_del_img", "con_del_img"})
            QVERIFY(told(name).startsWith("삭제할 행에"));
        at.open_member();
        const auto opened = [&](const char* name) {
            at.desk.opened_above.clear();
            return told(name);
        };
        QCOMPARE(opened("mem_in_img"), "mem_in_dlg");
        QCOMPARE(opened("dues_in_img"), "dues_in_dlg"); // for the year that is due
        QCOMPARE(at.on.c.cur_val_year + at.on.c.cur_code_member, "202520");
        at.desk.opened_above.clear();
        press(&control<QListWidget>(*at.screen, "custom_lst"), Qt::Key_F7);
        QCOMPARE(at.desk.opened_above, QStringList{"dues_in_dlg"});
        QCOMPARE(opened("mem_ud_img"), "mem_ud_dlg");
        click_row(&control<grid>(*at.screen, "dues_b_grd"), 0);
        QCOMPARE(opened("dues_del_img"), "dues_del_dlg");
        QCOMPARE(at.on.c.cur_dues_id, at.stored("dues_b_tbl", "dues_id"));
        click_row(&control<grid>(*at.screen, "com_grd"), 0);
        QCOMPARE(opened("comp_ud_img"), "comp_ud_dlg");
        QCOMPARE(at.on.c.cur_company_id + at.on.c.comp_ud_caller, at.stored("company", "company_id") + u'1');
        QCOMPARE(at.on.c.current_screen, 4);
        click_row(&control<grid>(*at.screen, "contract_grd"), 0);
        QCOMPARE(opened("con_ud_img"), "con_ud_dlg");
        QCOMPARE(at.on.c.cur_con_date + at.on.c.cur_con_day, "2025070120250601");
        click_row(&control<grid>(*at.screen, "contract_grd"), 1); // the empty row
        QVERIFY(opened("con_del_img").startsWith("삭제할 행에"));
        at.on.c.db_conn.write("update contract_list set con_id=32768");
        at.open_member();
        click_row(&control<grid>(*at.screen, "contract_grd"), 0);
        QVERIFY(opened("con_ud_img").contains("32768"));
        a_dues_year{number, "2026"}.store_in(at.on.c.db_conn);
        QVERIFY(opened("mem_in_img").startsWith("올해 회원으로"));
    }
};

ORVO_SCREEN_TESTS(member_update_test)
#include "member_update_test.moc"
