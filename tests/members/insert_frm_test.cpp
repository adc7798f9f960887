#include "members/screens/insert_frm.h"
#include "support/builders.h"
#include "support/engines.h"
#include "support/fake_desk.h"
#include "support/pausable_proxy.h"
#include "support/screens.h"
#include "support/test_register.h"
#include "ui/controls.h"

#include "hands/hands.h"

#include <QCheckBox>
#include <QLabel>
#include <QListWidget>
#include <QTest>

using namespace orvo;

namespace {

const QString no_pledge = QStringLiteral("약정은 입력하지 않으셨습니다.");
const QString no_workplace = QStringLiteral("근무처 내용은 입력하지 않습니다.");
const QString done = QStringLiteral("입력이 완료됬습니다.");
const QString taken = QStringLiteral("같은 주민등록 번호가 존재 합니다. 다시확인하여 주세요");
const QString open_him = QStringLiteral("이 번호의 회원을 열어 볼까요?\n입력하던 내용은 보관됩니다.");
const QString offered =
    QStringLiteral("2026-11-22 10:00에 작성하다가 저장하지 않은 등록이 있습니다. 이어서 작성할까요?");

void add_codes(connection& db)
{
    const auto add = [&](const char* table, std::initializer_list<std::pair<const char*, QString>> fields) {
        a_row row{table, database::local};
        for (const auto& [column, value] : fields)
            row.with(column, value);
        row.store_in(db);
    };
    add("branch_code", {{"code_bran", "10"}, {"branch_name", "서울"}});
    add("branch_code", {{"code_bran", "20"}, {"branch_name", "부산"}});
    add("big_division", {{"code_big", "30"}, {"big_name", "학교"}});
    add("section_code",
        {{"code_bran", "10"}, {"code_big", "30"}, {"code_sect", "2"}, {"section_name", "강남"}});
    add("section_code",
        {{"code_bran", "20"}, {"code_big", "30"}, {"code_sect", "2"}, {"section_name", "해운대"}});
    add("money_member", {{"code_member", "1"}, {"mem_kind", "정회원"}, {"mem_dues", "50000"}});
    add("great_division", {{"code_part", "100"}, {"code_great", "10"}, {"great_name", "학교급식"}});
    add("small_division",
        {{"code_part", "100"}, {"code_great", "10"}, {"code_small", "3"}, {"small_name", "초등"}});
    add("receipt_place", {{"code_receipt", "1"}, {"receipt_name", "본회"}});
    add("scholarship", {{"code_scholar", "10"}, {"scholar_name", "박사"}});
}

/// The form on a client of its own, with some codes.
struct at_form {
    explicit at_form(engine kind = engine::embedded) : on{kind}
    {
        on.c.session_id = QStringLiteral("head");
        add_codes(on.c.local_conn);
        open();
    }

    void open()
    {
        form.reset();
        form = std::make_unique<insert_frm>(on.c, desk, nullptr);
        bring_up(*form, 1366, 700);
    }
    void write(const char* field, const QString& text)
    {
        auto& line = control<QLineEdit>(*form, field);
        line.clear();
        type(&line, text);
    }
    void pick(const char* name, const QString& text)
    {
        auto& list = control<QComboBox>(*form, name);
        list.setCurrentIndex(list.findText(text));
        Q_EMIT list.activated(list.currentIndex());
    }
    QString shown(const char* name) { return shown_by(control<QWidget>(*form, name)); }
    void save() { click(&control<QPushButton>(*form, "mem_in_img")); }
    void fill_required()
    {
        write("name_txt", QStringLiteral("오'영희"));
        write("pers_no1_txt", QStringLiteral("900101"));
        write("pers_no2_txt", QStringLiteral("1234568"));
        pick("mem_kind_cbb", QStringLiteral("정회원"));
        pick("bran_cbb", QStringLiteral("서울"));
        pick("big_cbb", QStringLiteral("학교"));
        pick("sect_cbb", QStringLiteral("강남"));
        for (const auto& [field, text] :
             {std::pair{"tel1_txt", "02"}, {"tel2_txt", "123"}, {"tel3_txt", "4567"}})
            write(field, text);
    }
    void fill_workplace()
    {
        write("com_name_txt", QStringLiteral("한빛초등학교"));
        pick("part_cbb", QStringLiteral("집단급식소"));
        pick("great_div_cbb", QStringLiteral("학교급식"));
        pick("small_div_cbb", QStringLiteral("초등"));
        write("np2_txt", QStringLiteral("1,200"));
    }
    void pay()
    {
        for (const char* year : {"big_in_y_cbb", "bran_in_y_cbb"}) {
            type(control<QComboBox>(*form, year).lineEdit(), QStringLiteral("20261121"));
            press(control<QComboBox>(*form, year).lineEdit(), Qt::Key_Return);
        }
        pick("receipt_cbb", QStringLiteral("본회"));
    }
    QString stored(const char* table, const char* column)
    {
        QStringList all;
        for (const auto row : on.c.db_conn.read(std::string{"select * from "} + table))
            all.append(row.text(column));
        return all.join(u' ');
    }

    running_client on;
    fake_desk desk;
    std::unique_ptr<insert_frm> form;
};

} // namespace

class insert_frm_test : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void a_member_is_registered_in_one_press_data() { engines_under_test(); }
    void a_member_is_registered_in_one_press()
    {
        FETCH_ENGINE(kind);
        at_form at{kind};
        QCOMPARE(at.shown("payment_line"), QString{});
        at.fill_required();
        QCOMPARE(at.shown("payment_line"), "두 입금일자를 다 넣어야 입금이 저장됩니다.");
        QCOMPARE(at.shown("mem_dues_txt") + at.shown("agree_pay_txt"),
                 "50,00050,000"); // proposed by the kind
        at.write("agree_pay_txt", QStringLiteral("3만"));
        at.pay();
        QCOMPARE(at.shown("payment_line"), QString{});
        at.pick("scholar_cbb", QStringLiteral("대졸")); // one of four levels without a code of its own
        at.fill_workplace();
        at.save();
        QCOMPARE(at.on.say.take_texts(), (QStringList{no_pledge, done}));
        QCOMPARE(at.stored("person_m_tbl", "pers_name") + at.stored("person_m_tbl", "code_sect") +
                     at.stored("person_m_tbl", "email") + at.stored("person_m_tbl", "code_scholar"),
                 "오'영희20");
        QCOMPARE(at.stored("dues_h_tbl", "yet_money") + u' ' + at.stored("dues_b_tbl", "pers_mem_b_day"),
                 "20000 20261121");
        QCOMPARE(at.stored("company", "code_small") + u' ' + at.stored("company", "company_midday") + u' ' +
                     at.stored("company", "comp_except") + at.stored("company", "primary_flag"),
                 "3 1200 01");
        QCOMPARE(at.desk.shown, QList<qint16>{screen_code::insert_frm}); // ready for the next member
        at.open();
        QTest::qWait(1); // no draft is offered
    }

    void what_cannot_be_saved_is_refused_where_it_stands_data()
    {
        QTest::addColumn<QString>("field");
        QTest::addColumn<QString>("text");
        for (const auto& [field, text] : {std::pair{"name_txt", ""},
                                          {"pers_no2_txt", "1234567"},
                                          {"pers_no2_txt", "１２３４５６８"},
                                          {"tel3_txt", ""},
                                          {"agree_pay_txt", "-5"},
                                          {"dues_in_txt", "99999999999"},
                                          {"lic_pay_txt", "만원쯤"},
                                          {"year_pay_txt", "35,000,000"},
                                          {"np1_txt", "3만"}})
            QTest::addRow("%s %s", field, text) << QString{field} << QString{text};
    }
    void what_cannot_be_saved_is_refused_where_it_stands()
    {
        QFETCH(QString, field);
        QFETCH(QString, text);
        at_form at;
        at.fill_required();
        at.write(qPrintable(field), text);
        at.save();
        QCOMPARE(at.on.say.take_told().size(), 1);
        const QString numbers = QStringLiteral("pers_no1_txt pers_no2_txt");
        QVERIFY(at.form->focusWidget()->objectName() == field ||
                (numbers.contains(field) && numbers.contains(at.form->focusWidget()->objectName())));
        QCOMPARE(at.stored("person_m_tbl", "pers_no"), "");
    }

    void dependent_lists_follow_their_picks()
    {
        at_form at;
        at.pick("big_cbb", QStringLiteral("학교"));
        QCOMPARE(at.on.say.take_texts(), QStringList{"지부를 선택하여 주세요"});
        at.pick("bran_cbb", QStringLiteral("부산"));
        at.pick("big_cbb", QStringLiteral("학교"));
        QCOMPARE(control<QComboBox>(*at.form, "sect_cbb").itemText(0), "해운대");
        at.pick("bran_cbb", QStringLiteral("서울"));
        QCOMPARE(control<QComboBox>(*at.form, "sect_cbb").count(), 0); // the division decides
        at.pick("big_cbb", QStringLiteral("학교"));
        at.pick("sect_cbb", QStringLiteral("강남"));
        at.pick("bran_cbb", QStringLiteral("서울"));
        QCOMPARE(at.shown("sect_cbb"), "강남");
        at.pick("bran_cbb", QStringLiteral("부산")); // where that code is another sub-branch's
        QCOMPARE(at.shown("sect_cbb") + control<QComboBox>(*at.form, "sect_cbb").itemText(0), "");
        QCOMPARE(at.on.say.take_notes().size(), 1);
        at.pick("great_div_cbb", {});
        QCOMPARE(at.on.say.take_texts(), QStringList{"근무처 구분을 선택하십시요"});
        at.on.c.local_conn.write("delete from money_member");
        at.pick("mem_kind_cbb", QStringLiteral("정회원"));
        QVERIFY(at.on.say.take_texts().value(0).startsWith(QStringLiteral("회원종류에 대한")));
    }

    void enter_walks_the_fields()
    {
        at_form at;
        at.on.c.db_conn.write("insert into id_tbl (pers_no,id,passwd) values ('1','kim','')");
        const auto behind = [&](const char* field) {
            auto& from = control<QWidget>(*at.form, field);
            from.setFocus();
            press(dynamic_cast<QComboBox*>(&from) && static_cast<QComboBox&>(from).isEditable()
                      ? static_cast<QComboBox&>(from).lineEdit()
                      : &from,
                  Qt::Key_Return);
            return at.form->focusWidget()->objectName();
        };
        for (const auto& [field, next] : {std::pair{"name_txt", "sex2_opt"},
                                          {"sex1_opt", "pers_no1_txt"},
                                          {"sex2_opt", "pers_no1_txt"},
                                          {"tel3_txt", "hp1_txt"},
                                          {"email_txt", "lic_kind_chk(0)"},
                                          {"lic_kind_chk(5)", "lic_kind6_no"},
                                          {"lic_kind7_no", "marry_cbb"},
                                          {"lic_no_txt", "scholar_cbb"},
                                          {"year_pay_txt", "sub_cbb"},
                                          {"dues_in_txt", "big_in_y_cbb"},
                                          {"big_in_y_cbb", "big_in_m_cbb"},
                                          {"sick_txt", "com_post1_txt"},
                                          {"mnp3_txt", "pers_multy_cbb"},
                                          {"job_part_txt", "job_line_cbb"},
                                          {"bran_cbb", "big_cbb"},
                                          {"primary_cbb", "mem_in_img"},
                                          {"hp3_txt", "email_txt"}})
            QCOMPARE(behind(field), QString{next});
        QTest::keyClicks(at.form->focusWidget(), "kim"); // in front of the usual domain
        QCOMPARE(at.shown("email_txt"), "kim@association.example");
        at.write("id_txt", QStringLiteral("kim"));
        QCOMPARE(behind("id_txt"), "id_txt");
        QCOMPARE(at.shown("id_txt"), "");
        at.write("id_txt", QStringLiteral("o'kim"));
        QCOMPARE(behind("id_txt"), "passwd_txt");
        QCOMPARE(at.on.say.take_texts(),
                 (QStringList{"이미 있는 아이디 입니다.", "사용가능 아이디 입니다.."}));
        control<QLineEdit>(*at.form, "pers_no1_txt").setFocus();
        QTest::keyClicks(&control<QLineEdit>(*at.form, "pers_no1_txt"), "900101");
        QCOMPARE(at.form->focusWidget()->objectName(), "pers_no2_txt");
    }

    void pickers_find_their_fields()
    {
        at_form at;
        for (const auto& [table, list] : {std::pair{"branch_code", "bran_cbb"},
                                          {"receipt_place", "receipt_cbb"},
                                          {"great_division", "great_div_cbb"},
                                          {"job_line", "job_line_cbb"}})
            QCOMPARE(at.desk.target(1)->list_for(table)->objectName(), QString{list});
        QVERIFY(!at.desk.target(1)->list_for("small_division") &&
                !at.desk.target(1)->list_for("section_code"));
        click(&control<QToolButton>(*at.form, "com_img"));
        QCOMPARE(at.desk.target(1)->fields_for_address()->address->objectName(), "com_addr_txt");
        click(&control<QToolButton>(*at.form, "addr_img"));
        QCOMPARE(at.desk.target(1)->fields_for_address()->address->objectName(), "addr_txt");
        control<QComboBox>(*at.form, "bran_cbb").setFocus();
        press(&control<QComboBox>(*at.form, "bran_cbb"), Qt::Key_F2);
        QCOMPARE(at.desk.opened_above, (QStringList{"zip_dlg", "zip_dlg", "bran_dlg"}));
        at.form.reset();
        QVERIFY(!at.desk.target(1));
    }

    void a_number_that_is_taken_leads_to_its_member()
    {
        at_form at;
        a_member{"9001011234568"}.store_in(at.on.c.db_conn);
        at.fill_required();
        for (const answer way : {answer::second, answer::first}) { // the form can be used again
            at.on.say.will_answer(open_him, way);
            at.save();
            QCOMPARE(at.on.say.take_texts(), QStringList{taken});
        }
        QCOMPARE(at.on.c.member_to_open, "9001011234568");
        QCOMPARE(at.desk.shown, QList<qint16>{screen_code::manager_main_frm});
        QCOMPARE(at.stored("dues_h_tbl", "pers_no"), "");
    }

    void a_draft_outlives_the_form()
    {
        at_form at;
        at.fill_required();
        at.fill_workplace();
        at.write("agree_pay_txt", QStringLiteral("777"));
        at.write("passwd_txt", QStringLiteral("geheim"));
        control<QCheckBox>(*at.form, "lic_kind_chk(3)").setChecked(true);
        at.form.reset(); // as by a closed window
        QVERIFY(!at.on.c.local_conn.read("select * from drafts").front().text("fields").contains("geheim"));
        at.on.c.session_id = QStringLiteral("another");
        at.open();
        QTest::qWait(1); // nothing is offered to another operator
        at.on.c.session_id = QStringLiteral("head");
        at.on.say.will_answer(offered, answer::first);
        at.open();
        QTRY_COMPARE(at.shown("name_txt"), "오'영희");
        QCOMPARE(at.shown("sect_cbb") + at.shown("small_div_cbb") + at.shown("agree_pay_txt") +
                     at.shown("lic_kind_chk(3)"),
                 "강남초등7771");
        QVERIFY(at.on.say.take_texts().isEmpty());
        click(&control<QPushButton>(*at.form, "insert_img"));
        at.open();
        QTest::qWait(1); // an emptied form leaves no draft
        QCOMPARE(at.shown("name_txt"), "");
    }

    void who_looks_the_same_is_shown()
    {
        at_form at;
        a_member{"9001012222222"}.named("김영희").store_in(at.on.c.db_conn);
        at.write("name_txt", QStringLiteral("김영희"));
        at.write("pers_no1_txt", QStringLiteral("900101"));
        auto& alike = control<QListWidget>(*at.form, "lookalike_lst");
        QTRY_COMPARE(alike.count(), 1);
        QCOMPARE(alike.item(0)->text().section("  ", 0, 1), "김영희  900101-*******");
        at.on.c.session_branch = "20"; // and she is of 10
        at.write("name_txt", QStringLiteral("김영희"));
        QTRY_COMPARE(alike.item(0)->text(), "다른 지부의 회원  서울에 문의하십시오.");
        at.write("name_txt", QStringLiteral("김철수"));
        QTRY_COMPARE(alike.count(), 0);
    }

    /// Whatever of a save is in force when the operator gives a lost server up, the same press goes on with
    /// it.
    void a_broken_save_is_told_and_gone_on_with()
    {
        if (!is_at_hand(engine::postgresql))
            QSKIP("ORVO_TEST_POSTGRESQL names no server; scripts/with_postgresql.sh starts one");
        at_form at{engine::postgresql};
        pausable_proxy proxy{at.on.its_register.address()};
        client through{at.on.c.folder, proxy.address(), at.on.say, [] { return test_clock(); }};
        for (connection* each : {&through.local_conn, &through.db_conn})
            each->open();
        class giving_up : public line_watch {
        public:
            bool try_again(const db_failure&) override { return back; }
            bool keep_waiting(std::chrono::milliseconds, bool) override { return true; }
            void done_waiting() override
            {
                if (left-- == 0)
                    line->cut_lines();
            }
            pausable_proxy* line = nullptr;
            int left = -1;
            bool back = false;
        } watch;
        watch.line = &proxy;
        at.form = std::make_unique<insert_frm>(through, at.desk, nullptr);
        bring_up(*at.form);
        at.fill_required();
        at.pay();
        at.fill_workplace();
        QTest::qWait(400); // the glance at who looks the same is over
        watch.left = 2;    // the look for the number, the member, the dues of the year
        through.db_conn.set_watch(&watch);
        at.on.say.will_answer(
            "작업을 마치지 못했습니다.\n\n서버에 연결되지 않았습니다.\n\n저장된 것: 회원, 올해 회비\n"
            "저장하지 못한 것: 회비 입금",
            answer::second);
        at.save();
        QCOMPARE(at.stored("dues_h_tbl", "yet_money") + at.stored("dues_b_tbl", "pres_money"), "50000");
        QVERIFY(at.on.say.take_texts().isEmpty());
        watch.back = true;
        at.on.say.will_answer("앞서 이 회원을 저장하다가 중단되었습니다.\n저장된 것: 회원, 올해 "
                              "회비\n\n그때의 내용으로 나머지를 이어서 저장할까요?",
                              answer::first);
        at.write("agree_pay_txt", "20000"); // the year was stored with the other amount
        at.save();
        QCOMPARE(at.on.say.take_texts(), (QStringList{taken, no_pledge, done}));
        QCOMPARE(at.stored("person_m_tbl", "pers_no") + u' ' + at.stored("dues_h_tbl", "yet_money") + u' ' +
                     at.stored("dues_b_tbl", "pres_money") + u' ' + at.stored("company", "company_name"),
                 "9001011234568 0 50000 한빛초등학교");
    }
};

ORVO_SCREEN_TESTS(insert_frm_test)
#include "insert_frm_test.moc"
