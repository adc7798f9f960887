#include "hands/hands.h"
#include "reference/screens/code_editors.h"
#include "reference/screens/zip_dlg.h"
#include "support/builders.h"
#include "support/engines.h"
#include "support/fake_desk.h"
#include "support/screens.h"
#include "support/test_register.h"
#include "ui/controls.h"
#include "ui/pick_target.h"

#include <QLabel>

using namespace orvo;

namespace {

const QString apple = QStringLiteral("사과's 🍎 \"100%\"");

/// The console, with a list of one chosen entry.
struct console : pick_target {
    explicit console(desk& at) : pick_target{at, screen_code::manager_main_frm} { list.add("그대로", 5); }
    code_list* list_for(std::string_view table) override { return table == takes ? &list : nullptr; }
    std::optional<address_fields> fields_for_address() override { return fields; }
    std::string_view takes;
    code_list list{"a_cbb"};
    std::optional<address_fields> fields;
};

/// A dialog over the console.
struct at_dialog {
    explicit at_dialog(engine kind = engine::embedded) : on{kind} {}
    /// An editor whose table holds 10 서울, 20 부산, 30 대구 on both sides.
    void open(std::string_view name)
    {
        of = std::ranges::find(code_editors(), name, &code_editor::dialog);
        for (connection* side : {&on.c.local_conn, &on.c.db_conn}) {
            side->direct("delete from " + std::string{of->table});
            for (const auto& [code, called] : {std::pair{10, "서울"}, {20, "부산"}, {30, "대구"}})
                a_row{of->table}.with(of->key, code).with(of->name, called).store_in(*side);
        }
        caller.takes = of->table;
        dlg = make_code_editor(*of, on.c, desk, nullptr);
    }
    /// A button's name, "row 1", or a key.
    void act(const QString& what)
    {
        if (auto* button = dlg->findChild<QPushButton*>(what))
            click(button);
        else if (what.startsWith("row "))
            click_row(dlg->findChild<grid*>(), what.mid(4).toInt());
        else
            press(dlg->focusWidget(), Qt::Key{QKeySequence{what}[0].key()});
    }
    void enter(const QString& text, const QString& then)
    {
        bring_up(*dlg);
        control<QLineEdit>(*dlg, "str_txt").clear();
        type(&control<QLineEdit>(*dlg, "str_txt"), text);
        act(then);
    }
    QString cells(int row) const
    {
        const auto& all = *dlg->findChild<grid*>();
        QString text = all.chosen_row() == row ? "*" : "";
        for (const int column : {3, 2, 1, 0})
            text.prepend(all.cell(row, column));
        return text;
    }
    QString list() const
    {
        QString all = caller.list.currentIndex() < 0 ? "" : "*";
        for (int at = 0; at < caller.list.count(); ++at)
            all += caller.list.itemText(at) + caller.list.itemData(at).toString();
        return all;
    }

    running_client on;
    fake_desk desk;
    console caller{desk};
    std::unique_ptr<dialog> dlg;
    std::vector<code_editor>::const_iterator of;
};

} // namespace

class reference_test : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void every_editor_adds_on_both_sides_by_its_step_data() { engines_under_test(); }
    void every_editor_adds_on_both_sides_by_its_step()
    {
        FETCH_ENGINE(kind);
        running_client on{kind};
        for (const code_editor& of : code_editors()) {
            const bool by_parent = of.key == "code_great" || of.key == "code_small" || of.key == "code_sect";
            std::vector<column_text> texts{{of.name, "str_txt", apple}, {"", "add_txt", ""}, {"", "tel", ""}};
            QList<qint64> codes;
            for (const int top : {10, 10, 20}) {
                const values by{{"code_part", top}, {"code_great", 1}, {"code_bran", top}, {"code_big", 1}};
                codes.append(add_code(on.c.local_conn, on.c.db_conn, of, texts, by).code);
            }
            QCOMPARE(codes, (QList<qint64>{of.step, 2 * of.step, by_parent ? of.step : 3 * of.step}));
            for (connection* side : {&on.c.local_conn, &on.c.db_conn})
                QVERIFY2(find_codes(*side, of, "'s _ \"100%").size() == 3, of.dialog);
            QVERIFY2(!all_codes(on.c.db_conn, of, {{"code_bran", 20}, {"code_big", 1}}).empty(), of.dialog);
        }
        const code_editor& of = code_editors().front();
        for (const qint64 highest : {90, 2147483637, 2147483640}) {
            a_row{of.table, database::local}.with(of.key, highest).store_in(on.c.local_conn);
            const auto made = add_code(on.c.local_conn, on.c.db_conn, of, {{of.name, "str_txt", apple}}, {});
            QCOMPARE(made.code, highest < 2147483640 ? highest + 10 : 0);
            QCOMPARE(made.is_on_server, made.refusal.isEmpty());
        }
    }

    void what_is_picked_is_handed_to_the_screen_in_use()
    {
        for (const auto& [dialog, word, screen, acts, list, is_open] :
             {std::tuple{"bran_dlg", "%", 2, "row 3", "*그대로5", true}, // the empty one
              {"bran_dlg", "%", 2, "close_img", "서울10부산20대구30", false},
              {"bran_dlg", "%", 2, "Esc", "*그대로5", false},
              {"bran_dlg", "%", 2, "Down,Down,Return", "부산20", false},
              {"bran_dlg", "없음", 2, "row 0", "*그대로5", false},
              {"bran_dlg", "없음", 2, "close_img", "*그대로5", false},
              {"private_dlg", "%", 7, "row 1", "*그대로5", false},
              {"great_dlg", "%", 2, "row 1", "부산20", false},
              {"great_dlg", "%", 2, "close_img", "*그대로5", false},
              {"section_dlg", "%", 2, "row 1,close_img", "*그대로5", false}}) {
            at_dialog at;
            at.on.c.current_screen = static_cast<qint16>(screen);
            at.open(dialog);
            at.enter(word, "Return");
            QCOMPARE(at.on.say.take_texts().join(""), QString{*word == '%' ? "" : "검색한 내용이 없습니다."});
            for (const QString& each : QString{acts}.split(','))
                at.act(each);
            QVERIFY2(at.list() == list && at.dlg->isVisible() == is_open, qPrintable(dialog + at.list()));
        }
    }

    void branch_operators_find_but_do_not_add()
    {
        at_dialog at;
        at.on.c.session_branch = "07";
        for (const code_editor& each : code_editors()) {
            at.open(each.dialog);
            const auto& insert_img = control<QPushButton>(*at.dlg, "insert_img");
            QVERIFY(!insert_img.isEnabled() && !insert_img.toolTip().isEmpty());
            at.enter("부", each.search_button);
            QCOMPARE(at.cells(0), QStringLiteral("20부산"));
            at.dlg->findChild<QPushButton*>("insert_img")->setEnabled(true); // as by a tool from outside
            at.enter("부", "insert_img");
            QCOMPARE(at.on.say.take_texts(), QStringList{"코드는 본회에서만 추가할 수 있습니다."});
        }
    }

    void what_is_missing_or_too_much_is_told_at_its_field()
    {
        at_dialog at;
        for (const auto& [dialog, length, button, text, field] :
             {std::tuple{"bran_dlg", 0, "search_img", "검색할 단어를 입력하여 주십시요", "str_txt"},
              {"section_dlg", 0, "insert_img", "항목을 입력하여 주세요", "str_txt"},
              {"section_dlg", 10000, "insert_img", "지부와 분과를 선택해야 입력이 가능합니다.", "bran_cbb"},
              {"bran_dlg", 10000, "insert_img", "60자까지 입력할 수 있습니다.", "str_txt"}}) {
            at.open(dialog);
            at.enter(QString{length, u'가'}, button);
            QCOMPARE(at.on.say.take_texts(), QStringList{text});
            QCOMPARE(at.dlg->focusWidget()->objectName(), QString{field});
        }
    }

    void what_is_added_is_shown_and_its_fields_are_emptied()
    {
        at_dialog at;
        a_row{"great_division"}.with("code_part", 200).with("code_great", 60).store_in(at.on.c.local_conn);
        at.open("small_dlg");
        control<QComboBox>(*at.dlg, "part_cbb").setCurrentIndex(1);
        control<QComboBox>(*at.dlg, "great_div_cbb").setCurrentIndex(0);
        at.enter(apple, "insert_img");
        QCOMPARE(at.cells(0), u'1' + apple + u'*');
        QCOMPARE(at.on.c.db_conn.number("select code_part from small_division where code_great=60"), 200);
        at.open("deposit_dlg");
        for (const char* name : {"add_txt", "tel1_txt", "tel2_txt", "tel3_txt"})
            control<QLineEdit>(*at.dlg, name).setText(QString{name}.left(4));
        at.enter("한빛", "insert_img");
        QCOMPARE(at.cells(3), QStringLiteral("31한빛add_tel1tel2tel3*"));
        for (const QLineEdit* field : at.dlg->findChildren<QLineEdit*>())
            QVERIFY(field->text().isEmpty());
        QCOMPARE(at.on.say.take_texts(), (QStringList{"입력되었습니다.", "입력되었습니다."}));
    }

    void a_code_that_another_took_is_added_after_all_data() { engines_under_test(); }
    void a_code_that_another_took_is_added_after_all()
    {
        FETCH_ENGINE(kind);
        const QString way_on = "저장하지 못했습니다.\n다른 컴퓨터에서 같은 코드를 먼저 추가하였습니다.\n\n"
                               "코드표를 서버와 맞춘 뒤에 다시 추가하십시오.";
        for (const bool server_first : {false, true}) {
            at_dialog at{kind};
            at.open(server_first ? "big_dlg" : "bran_dlg");
            a_row{at.of->table}.with(at.of->key, 40).with(at.of->name, "먼저").store_in(at.on.c.db_conn);
            const char* where = server_first ? "" : "이 컴퓨터에만 저장하고, 서버에는 ";
            at.on.say.will_answer("코드 40을(를) " + (where + way_on),
                                  server_first ? answer::first : answer::second);
            at.enter("나중", "insert_img");
            if (!server_first) { // not now: with the next press, be it in another dialog
                at.dlg = make_code_editor(*at.of, at.on.c, at.desk, nullptr);
                at.enter("나중", "insert_img");
            }
            at.act("insert_img");
            QCOMPARE(at.cells(3) + at.cells(4), QStringLiteral("40먼저50나중*"));
            QCOMPARE(all_codes(at.on.c.db_conn, *at.of, {}).size(), 5U);
        }
    }

    void an_address_goes_to_the_fields_of_the_screen_in_use()
    {
        at_dialog at;
        const auto tells_nothing = [&at] { return shown_by(control<QLabel>(*at.dlg, "no_codes")).isEmpty(); };
        at.dlg = std::make_unique<zip_dlg>(at.on.c, at.desk, nullptr);
        QVERIFY(!tells_nothing());
        at.enter("동", "Return"); // the dialog says why, in place of a box for every word
        QVERIFY(at.on.say.take_texts().isEmpty() && !tells_nothing());
        for (const auto& [post, dong] : {std::pair{"135080", "역삼동"}, {"135-081", "o'동 🍎"}, {"1", "면"}})
            a_row{"zip", database::local}.with("post", post).with("dong", dong).store_in(at.on.c.local_conn);
        QLineEdit post1, post2, address{"그대로"};
        at.dlg = std::make_unique<zip_dlg>(at.on.c, at.desk, nullptr);
        at.enter("없음", "Return");
        QCOMPARE(at.on.say.take_texts(), QStringList{"검색한 내용이 없습니다."});
        at.enter("동", "Return");
        QVERIFY(tells_nothing());
        QCOMPARE(at.cells(1), QStringLiteral("135-081  o'동 🍎    "));
        at.act("row 0"); // nobody takes it
        at.on.c.current_screen = screen_code::manager_main_frm;
        at.act("row 0"); // who takes no address
        at.caller.fields = {&post1, &post2, &address};
        at.act("row 2"); // the empty one
        QVERIFY(at.dlg->isVisible() && address.text() == "그대로");
        at.act("row 0");
        QVERIFY(!at.dlg->isVisible());
        QCOMPARE(post1.text() + post2.text() + address.text(), QStringLiteral("135080  역삼동    "));
    }
};

ORVO_SCREEN_TESTS(reference_test)
#include "reference_test.moc"
