#include "base/korean_numerals.h"
#include "dues/receipts/rules/receipt_queue.h"
#include "dues/receipts/rules/receipt_search.h"
#include "support/builders.h"
#include "support/engines.h"
#include "support/failure_of.h"
#include "support/test_register.h"

#include <limits>

using namespace orvo;

namespace {

const QString kim = QStringLiteral("9001011234568");
const QString lee = QStringLiteral("8512122234567");

/// A register with two members of branch 10 and kind 20, of whom the first is at home and has paid twice.
struct at_receipts {
    explicit at_receipts(engine kind) : on{kind}
    {
        a_row{"branch_code"}.with("code_bran", 10).with("branch_name", "서울지부").store_in(on.c.db_conn);
        a_row{"money_member"}.with("code_member", 20).with("mem_kind", "정회원").store_in(on.c.db_conn);
        member(kim).named("O'Neil 김").licensed("제7'호").store_in(on.c.db_conn);
        pay(kim, "20260301", "");
        pay(kim, "20260315", "");
    }

    static a_member member(const QString& pers_no, const QString& place = "자택")
    {
        a_member made{pers_no};
        made.with("get_mail_place", place).with("code_post", "137070").with("pers_add", "서초동 'A'동");
        made.with("pers_call", "선생님");
        return made;
    }
    void pay(const QString& pers_no, const QString& day, const QString& branch_day)
    {
        a_payment{pers_no, "2026"}
            .with("pers_mem_day", day)
            .with("pers_mem_b_day", branch_day)
            .store_in(on.c.db_conn);
    }
    /// The days that are listed, in the order of the days; "none" where no member was found.
    QString listed(const period_receipts& wanted, progress* follow = nullptr)
    {
        return days(queue_receipts(on.c.db_conn, on.c.local_conn, wanted, follow));
    }
    QString listed(const member_receipts& wanted)
    {
        return days(queue_receipts(on.c.db_conn, on.c.local_conn, wanted));
    }
    std::vector<receipt> queue() { return queued_receipts(on.c.local_conn); }

    static QString days(const std::optional<listed_receipts>& found)
    {
        if (!found)
            return "none";
        QStringList all;
        for (const listed_receipt& each : *found)
            all.append(each.pers_no.left(2) + ':' + each.day.mid(4));
        all.sort();
        return all.join(' ');
    }

    running_client on;
};

const period_receipts march{paid_at::head_office, "20260301", "20260331", "0"};
const member_receipts all_of_kind{receipt_item::name, "", "20", "0"};

class impatient : public progress {
public:
    bool go_on(qint64) override { return false; }
};

} // namespace

class receipt_queue_test : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void a_period_brings_each_payment_as_often_as_its_member_paid_data() { engines_under_test(); }
    void a_period_brings_each_payment_as_often_as_its_member_paid()
    {
        FETCH_ENGINE(kind);
        at_receipts at{kind};
        QCOMPARE(at.listed(march), "90:0301 90:0301 90:0315 90:0315");
        QCOMPARE(at.queue().size(), 4U);
        at.pay(kim, "20260331", "20260401");
        QCOMPARE(at.listed(march), QString{"90:0301 90:0301 90:0301 90:0315 90:0315 90:0315 "
                                           "90:0331 90:0331 90:0331"});
        at.pay(kim, "", "20260302");
        QCOMPARE(at.listed({paid_at::branch, "20260301", "20260401", "10"}),
                 "90:0302 90:0302 90:0331 90:0331"); // of a payment with both dates the head office's shows
        QCOMPARE(at.listed({paid_at::branch, "20260301", "20260401", "20"}), "none");
        QCOMPARE(at.queue().size(), 4U); // the earlier search stays
        // By member, every payment comes once.
        QCOMPARE(at.listed(all_of_kind), "90:0301 90:0302 90:0315 90:0331");
    }

    void a_receipt_goes_where_the_mail_goes_data() { engines_under_test(); }
    void a_receipt_goes_where_the_mail_goes()
    {
        FETCH_ENGINE(kind);
        struct {
            const char* place;
            const char* workplace; ///< null: none
            bool is_primary;
            int branch, kind;
            const char* page; ///< empty: no receipt
        } const cases[] = {
            {"자택", "한빛'초", true, 10, 20, "137-070|서초동 'A'동||이영|선생님|정회원|서울지부"},
            {"직장", "한빛'초", true, 10, 20, "607-080|부산 1|한빛'초|이영|선생님|정회원|서울지부"},
            {"직장", "한빛'초", false, 10, 20, ""},
            {"직장", nullptr, false, 10, 20, ""},
            {"발송중지", "한빛'초", true, 10, 20, ""},
            {"", "한빛'초", true, 10, 20, ""},
            {"자택", nullptr, false, 77, 20, ""},
            {"자택", nullptr, false, 10, 77, ""},
        };
        for (const auto& each : cases) {
            at_receipts at{kind};
            at.member(lee, each.place)
                .named("이영")
                .of_branch(each.branch)
                .of_kind(each.kind)
                .store_in(at.on.c.db_conn);
            if (each.workplace)
                a_workplace{lee}
                    .named(each.workplace)
                    .with("primary_flag", each.is_primary)
                    .with("code_post", "607080")
                    .with("company_add", "부산 1")
                    .store_in(at.on.c.db_conn);
            at.pay(lee, "20260401", "");
            for (const bool by_period : {true, false}) {
                at.listed(all_of_kind); // of the other member, whose rows are to go
                QVERIFY(by_period ? at.listed({paid_at::head_office, "20260401", "20260401", ""}) != "none"
                                  : at.listed({receipt_item::resident_number, "1212",
                                               QString::number(each.kind), "00"}) != "none");
                QString page;
                for (const receipt& one : at.queue())
                    page += QStringList{one.code_post, one.pers_add, one.company_name, one.pers_name,
                                        one.pers_call, one.mem_kind, one.branch_name}
                                .join('|');
                QCOMPARE(page, QString{each.page});
            }
        }
    }

    void members_are_found_by_the_item_in_the_own_branch_data() { engines_under_test(); }
    void members_are_found_by_the_item_in_the_own_branch()
    {
        FETCH_ENGINE(kind);
        at_receipts at{kind};
        at.member(lee).named("이영").of_branch(20).store_in(at.on.c.db_conn); // has paid nothing
        struct {
            receipt_item item;
            const char* key;
            const char* code_member;
            const char* branch;
            const char* found;
        } const cases[] = {
            {receipt_item::name, "neil'", "20", "0", "none"},
            {receipt_item::name, "O'Neil", "20", "10", "90:0301 90:0315"},
            {receipt_item::name, "O'Neil", "20", "20", "none"},
            {receipt_item::name, "O'Neil", "21", "0", "none"},
            {receipt_item::resident_number, "0101", "20", "", "90:0301 90:0315"},
            {receipt_item::licence, "7'", "20", "", "90:0301 90:0315"},
            {receipt_item::name, "이", "20", "0", ""},
        };
        for (const auto& each : cases)
            QCOMPARE(at.listed({each.item, each.key, each.code_member, each.branch}), QString{each.found});
        QVERIFY(at.queue().empty()); // the last one found a member, and emptied it
        at.pay(kim, "", "");
        at.listed({receipt_item::name, "", "20", "10"});
        QStringList dates;
        for (const receipt& one : at.queue()) {
            QCOMPARE(one.pers_name, "O'Neil 김");
            QCOMPARE(one.lic_no, "제7'호");
            QCOMPARE(one.pres_money, 50'000);
            dates.append(one.in_date);
        }
        dates.sort();
        QCOMPARE(dates, (QStringList{"       ", "2026    03   01", "2026    03   15"}));
    }

    void unticking_takes_all_rows_of_a_member_and_an_ended_search_none()
    {
        at_receipts at{engine::embedded};
        at.member(lee).store_in(at.on.c.db_conn);
        at.pay(lee, "20260302", "");
        at.listed(march);
        take_out_members(at.on.c.local_conn, {kim, kim, "1' or '1'='1"});
        QCOMPARE(at.queue().size(), 1U);
        QCOMPARE(at.queue().front().pers_no, lee);
        // Long enough for the operator to end it.
        int day = 0;
        at.on.c.db_conn.load("dues_b_tbl", {"pers_no", "pers_mem_day", "pres_money"}, [&](auto& fields) {
            fields = {cell::of(std::string_view{"8512122234567"}), cell::of(std::string_view{"20260310"}),
                      cell::of(std::int64_t{1})};
            return ++day <= 600;
        });
        impatient hands;
        QCOMPARE(failure_of([&] { at.listed(march, &hands); }), failure_kind::cancelled);
        QCOMPARE(at.queue().size(), 1U);
    }

    void amounts_are_written_out()
    {
        struct {
            qint64 won;
            const char* text;
        } const cases[] = {
            {0, "일금 영원정"},
            {7, "일금 칠원정"},
            {10, "일금 일십원정"},
            {10'000, "일금 일만원정"},
            {50'000, "일금 오만원정"},
            {113'560, "일금 일십일만삼천오백육십원정"},
            {100'000'000, "일금 일억원정"},
            {100'000'001, "일금 일억일원정"},
            {2'147'483'647, "일금 이십일억사천칠백사십팔만삼천육백사십칠원정"},
            {-30'000, "일금 마이너스 삼만원정"},
            {std::numeric_limits<qint64>::min(),
             "일금 마이너스 구백이십이경삼천삼백칠십이조삼백육십팔억오천사백칠십칠만오천팔백팔원정"},
        };
        for (const auto& each : cases)
            QCOMPARE(in_korean_numerals(each.won), QString{each.text});
    }
};

QTEST_GUILESS_MAIN(receipt_queue_test)
#include "receipt_queue_test.moc"
