#include "base/korean_numerals.h"
#include "dues/receipts/screens/dues_receipt_dlg.h"
#include "dues/receipts/screens/pers_receipt_dlg.h"
#include "dues/receipts/screens/receipt_dsg.h"
#include "hands/hands.h"
#include "support/builders.h"
#include "support/engines.h"
#include "support/fake_desk.h"
#include "support/other_types.h"
#include "support/screens.h"
#include "support/test_register.h"
#include "ui/grid.h"

#include <QLabel>
#include <QPrinter>
#include <QProcess>

using namespace orvo;

namespace {

const QString kim{"9001011234568"}, lee{"8512122234567"};
const period_receipts march{paid_at::head_office, "20260301", "20260331", "0"};
const period_receipts april{paid_at::head_office, "20260401", "20260401", "0"};

/// A register with one member, of branch 10 and kind 20, who wants mail at home and has paid twice in March.
struct at_receipts {
    explicit at_receipts(engine kind = engine::embedded) : on{kind}
    {
        a_row{"branch_code"}.with("code_bran", 10).with("branch_name", "서울지부").store_in(db);
        a_row{"money_member"}.with("code_member", 20).with("mem_kind", "정회원").store_in(db);
        member(kim).named("O'Neil 김").licensed("제7'호").store_in(db);
        pay(kim, "20260301", "");
        pay(kim, "20260315", "");
    }
    static a_member member(const QString& pers_no, const QString& place = "자택")
    {
        a_member made{pers_no};
        made.with("get_mail_place", place).with("code_post", "137070").with("pers_add", "서초 'A'동");
        return made.with("pers_call", "선생님");
    }
    void pay(const QString& pers_no, const QString& day, const QString& branch_day)
    {
        a_payment paid{pers_no, "2026"};
        paid.with("pers_mem_day", day).with("pers_mem_b_day", branch_day).store_in(db);
    }
    auto search(const auto& wanted, progress* follow = nullptr)
    {
        return queue_receipts(db, on.c.local_conn, wanted, {on.c.session_id, on.c.now()}, follow);
    }
    std::vector<receipt> queue() { return queued_receipts(on.c.local_conn, 2026); }

    running_client on;
    connection& db = on.c.db_conn;
};

/// The days that are listed, in their order; "none" where no member was found.
QString days(const std::optional<listed_receipts>& found)
{
    QStringList all;
    for (const listed_receipt& each : found.value_or(listed_receipts{}))
        all.append(each.day.mid(4));
    all.sort();
    return found ? all.join(' ') : "none";
}

QString output_of(const char* program, const QStringList& arguments)
{
    QProcess run;
    run.start(QString{program}, arguments);
    run.waitForFinished();
    return QString::fromUtf8(run.readAllStandardOutput());
}

} // namespace

class receipts_test : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void a_period_brings_each_payment_as_often_as_its_member_paid_data() { engines_under_test(); }
    void a_period_brings_each_payment_as_often_as_its_member_paid()
    {
        FETCH_ENGINE(kind);
        at_receipts at{kind};
        for (const char* table : {"person_m_tbl", "dues_b_tbl", "money_member", "branch_code"})
            give_other_types(at.on.its_register, table);
        QCOMPARE(days(at.search(march)), "0301 0301 0315 0315");
        QCOMPARE(at.queue().front().pres_money, 50'000);
        at.pay(kim, "20260331", "20260401");
        QCOMPARE(days(at.search(march)), "0301 0301 0301 0315 0315 0315 0331 0331 0331");
        at.pay(kim, "", "20260302");
        const QString from{"20260301"}, to{"20260401"}; // with both dates the head office's shows
        QCOMPARE(days(at.search(period_receipts{paid_at::branch, from, to, "10"})), "0302 0302 0331 0331");
        for (const char* other : {"20", "10 A", ""})
            QCOMPARE(days(at.search(period_receipts{paid_at::branch, from, to, other})), "none");
        QCOMPARE(at.queue().size(), 4U);                            // the earlier search stays
        at.member(lee).named("이영").of_branch(20).store_in(at.db); // has paid nothing
        const std::pair<member_receipts, const char*> cases[] = {
            {{receipt_item::name, "O'Neil", "20", "10"}, "0301 0302 0315 0331"},
            {{receipt_item::name, "O'Neil", "20", "20"}, "none"},
            {{receipt_item::name, "O'Neil", "20", "서울"}, "none"},
            {{receipt_item::resident_number, "0101", "20", "0"}, "0301 0302 0315 0331"},
            {{receipt_item::licence, "7'", "20", "00"}, "0301 0302 0315 0331"},
            {{receipt_item::name, "이", "20", "0"}, ""},
        };
        for (const auto& [wanted, found] : cases)
            QCOMPARE(days(at.search(wanted)), QString{found});
        QVERIFY(at.queue().empty()); // the last one found a member
        at.pay(kim, "", "");
        at.search(member_receipts{receipt_item::name, "", "20", "10"});
        QString dates;
        for (const receipt& one : at.queue())
            dates += '|' + one.in_date + one.valid_until;
        QVERIFY(dates.contains("|       2026-12-31") && dates.contains("|2026    03   012026-12-31"));
    }

    void a_receipt_goes_where_the_mail_goes_data() { engines_under_test(); }
    void a_receipt_goes_where_the_mail_goes()
    {
        FETCH_ENGINE(kind);
        // Where to, the workplace (primary or not, "" for none), branch, kind; and the page, "" for none.
        const std::pair<QString, QString> cases[] = {
            {"자택/1/10/20", "137-070|서초 'A'동||김영희|선생님|정회원|서울지부"},
            {"직장/1/10/20", "607-080|부산 1|한빛'초|김영희|선생님|정회원|서울지부"},
            {"직장/0/10/20", ""},
            {"직장//10/20", ""},
            {"발송중지/1/10/20", ""},
            {"자택//77/20", ""},
            {"자택//10/77", ""},
        };
        for (const auto& [member, expected] : cases) {
            at_receipts at{kind};
            const QStringList is = member.split('/');
            at.member(lee, is[0]).with("code_bran", is[2]).with("code_member", is[3]).store_in(at.db);
            if (a_workplace work{lee}; !is[1].isEmpty())
                work.named("한빛'초")
                    .with("code_post", "607080")
                    .with("company_add", "부산 1")
                    .with("primary_flag", is[1])
                    .store_in(at.db);
            at.pay(lee, "20260401", "");
            const member_receipts by_number{receipt_item::resident_number, "1212", is[3], "00"};
            for (const bool by_period : {true, false}) {
                at.search(march); // of the other member, whose rows are to go
                QVERIFY(by_period ? at.search(april) : at.search(by_number));
                QString page;
                for (const receipt& one : at.queue())
                    page += one.code_post + '|' + one.pers_add + '|' + one.company_name + '|' +
                            one.pers_name + '|' + one.pers_call + '|' + one.mem_kind + '|' + one.branch_name;
                QCOMPARE(page, expected);
            }
        }
    }

    void unticking_takes_all_rows_of_a_member_and_an_ended_search_none()
    {
        at_receipts at;
        at.member(lee).store_in(at.db);
        at.pay(lee, "20260302", "");
        at.search(march);
        take_out_members(at.on.c.local_conn, {kim, kim, "1' or '1'='1"});
        int day = 0; // enough of them for the operator to end it
        at.db.load("dues_b_tbl", {"pers_no", "pers_mem_day"}, [&](auto& fields) {
            fields = {cell::of(std::string_view{"8512122234567"}), cell::of(std::string_view{"20260310"})};
            return ++day <= 600;
        });
        struct : progress {
            bool go_on(qint64) override { return false; }
        } impatient;
        QVERIFY_THROWS_EXCEPTION(db_failure, at.search(march, &impatient));
        QVERIFY(at.queue().size() == 1 && at.queue().front().pers_no == lee);
    }

    void amounts_are_written_out()
    {
        QString all;
        for (const qint64 won : {0, 10, 10'000, 113'560, 100'000'001, 2'147'483'647, -30'000})
            all += in_korean_numerals(won).remove("일금 ").replace("원정", " ");
        QCOMPARE(all, "영 일십 일만 일십일만삼천오백육십 일억일 "
                      "이십일억사천칠백사십팔만삼천육백사십칠 마이너스 삼만 ");
        QCOMPARE(in_korean_numerals(50'000), "일금 오만원정");
    }

    void a_period_is_searched_and_its_unticked_members_go()
    {
        at_receipts at;
        fake_desk desk;
        at.member(lee).store_in(at.db);
        at.pay(lee, "20260302", "");
        a_row{"receipt_place", database::local}.with("code_receipt", 1).store_in(at.on.c.local_conn);
        dues_receipt_dlg dlg{at.on.c, desk, nullptr};
        bring_up(dlg);
        auto* search_img = &control<QPushButton>(dlg, "search_img");
        auto& note_txt = control<QLabel>(dlg, "note_txt");
        auto& print_lst = control<grid>(dlg, "print_lst");
        click(search_img);
        QCOMPARE(at.on.say.take_texts(), QStringList{"입금장소를 입력하여 주세요"});
        control<code_list>(dlg, "receipt_cbb").setCurrentIndex(0);
        control<code_list>(dlg, "m1_cbb").choose_text("02");
        click(search_img);
        QCOMPARE(print_lst.filled_rows(), 5);
        click_row(&print_lst, 1);
        QVERIFY(note_txt.text().contains("영수증 1장") && note_txt.text().contains("선택된 3줄도"));
        press(&print_lst, Qt::Key_Down);
        press(&print_lst, Qt::Key_Space);
        press(&print_lst, Qt::Key_Return); // a search would tick all lines again
        QVERIFY(note_txt.text().contains("영수증 1장") && note_txt.text().contains("선택된 2줄도"));
        control<QPushButton>(dlg, "print_img").setFocus();
        press(dlg.focusWidget(), Qt::Key_Return);
        QVERIFY(!dlg.isVisible() && desk.opened_above == QStringList{"receipt_dsg"});
        QVERIFY(at.queue().size() == 1 && at.queue().front().pers_no == lee);
    }

    void a_queue_goes_to_the_printer_by_who_made_it_alone()
    {
        at_receipts at;
        fake_desk desk;
        at.on.c.session_id = "head";
        at.search(march);
        for (const auto& [id, branch, is_offered] : {std::tuple{"head", "0", true},
                                                     {"head", "10", false},
                                                     {"seoul", "0", false},
                                                     {"", "0", false}}) {
            at.on.c.session_id = id;
            at.on.c.session_branch = branch;
            dues_receipt_dlg dlg{at.on.c, desk, nullptr};
            bring_up(dlg);
            auto& left_img = control<QPushButton>(dlg, "left_img");
            QCOMPARE(left_img.isVisible(), is_offered);
            QCOMPARE(
                shown_by(control<QLabel>(dlg, "note_txt")).startsWith("2026-11-22 10:00에 만든 영수증 4장"),
                is_offered);
            click(&control<QPushButton>(dlg, "print_img"));
            QCOMPARE(at.on.say.take_texts(),
                     QStringList{"출력할 영수증이 목록에 없습니다. 먼저 검색하십시오."});
            QVERIFY(dlg.isVisible() && desk.opened_above.isEmpty());
            if (!is_offered)
                continue;
            click(&left_img);
            auto& print_lst = control<grid>(dlg, "print_lst");
            QVERIFY(print_lst.filled_rows() == 4 && print_lst.is_ticked(3) && !left_img.isVisible());
            QCOMPARE(print_lst.cell(3, 3), "20260315");
            click(&control<QPushButton>(dlg, "print_img"));
            QCOMPARE(std::exchange(desk.opened_above, {}), QStringList{"receipt_dsg"});
        }
    }

    void the_report_goes_to_a_file_and_to_a_printer()
    {
        at_receipts at;
        fake_desk desk;
        pers_receipt_dlg dlg{at.on.c, desk, nullptr};
        bring_up(dlg);
        press(&control<QLineEdit>(dlg, "str_txt"), Qt::Key_Return);
        click(&control<QPushButton>(dlg, "print_img"));
        const QString pdf = at.on.c.folder.file("a.pdf"), paper = at.on.c.folder.file("b.pdf");
        printer_answer answer = printer_answer::no_printer;
        receipt_dsg report{at.on.c, nullptr, [&](QPrinter& to, int, QWidget*) {
                               to.setOutputFileName(paper);
                               to.setPrintRange(QPrinter::PageRange);
                               to.setFromTo(2, 2);
                               return answer;
                           }};
        bring_up(report);
        press(&report, Qt::Key_End);
        QCOMPARE(shown_by(control<QLineEdit>(report, "page_txt")), "2");
        for (const QString& path : {pdf, at.on.c.folder.file("없는 폴더/a.pdf")}) {
            at.on.say.will_name_file({"PDF 문서(*.pdf)|*.pdf"}, 0, path);
            click(&control<QPushButton>(report, "pdf_cmd"));
            const QStringList told = at.on.say.take_texts();
            QVERIFY(told.size() == 1 && told[0].contains("작성 되었습니다.") == (path == pdf));
        }
        const QString text = output_of("pdftotext", {pdf, "-"});
        QCOMPARE(text.count('\f'), 2); // pages
        for (const char* each :
             {"O'Neil 김 선생님", "서초 'A'동", "137-070", "₩50,000", "일금 오만원정", "제7'호",
              "2026년 03월 01일", "2026년 03월 15일", "정회원", "서울지부", "2026-12-31"})
            QVERIFY2(text.contains(each), each);
        const QStringList fonts = output_of("pdffonts", {pdf}).trimmed().split('\n').mid(2);
        for (const QString& each : fonts) // with no lines, there would be no text either
            QVERIFY2(each.simplified().section(' ', -5, -5) == "yes", qPrintable(each)); // embedded
        press(&control<QWidget>(report, "view"), Qt::Key_Return);
        control<QPushButton>(report, "print_cmd").setFocus();
        press(report.focusWidget(), Qt::Key_Return);
        QCOMPARE(at.on.say.take_texts().size(), 1);
        answer = printer_answer::chosen;
        click(&control<QPushButton>(report, "print_cmd"));
        QVERIFY(!output_of("pdftotext", {paper, "-"}).contains("03월 01일") && QFile::exists(paper));
    }
};

ORVO_SCREEN_TESTS(receipts_test)
#include "receipts_test.moc"
