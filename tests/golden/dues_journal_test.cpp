#include "dues/receipts/rules/receipt_search.h"
#include "dues/rules/payments.h"
#include "dues/rules/pledges.h"
#include "dues/rules/yearly_dues.h"
#include "dues/search/dues_query.h"
#include "members/rules/member_record.h"
#include "support/builders.h"
#include "support/golden.h"
#include "support/test_register.h"

#include <QTest>

using namespace orvo;

namespace {

const QString kim = "90'1", lee = "90'2", today = "20261122", from = "20250301", to = "20250331";
const dues_year year{kim, "2025"}, this_year{kim, "2026"}, none{kim, ""}, lifetime{kim, "평생회원"};
const chosen_instalment chosen{kim, "20260315", "1"};

/// Kim owes 30000 of 2025, got money back for 2024 and has paid the first instalment of a pledge; Lee's mail
/// goes to the workplace, a third member's is stopped.
void fill(connection& db)
{
    a_row{"branch_code"}.with("code_bran", 10).with("branch_name", "서울").store_in(db);
    a_row{"money_member"}.with("code_member", 20).with("mem_kind", "정회원").store_in(db);
    for (const auto& [pers_no, mail] : {std::pair{kim, "자택"}, {lee, "직장"}, {"90'3", "발송중지"}}) {
        a_member{pers_no}.named("김O'영희").with("get_mail_place", mail).store_in(db);
        a_payment{pers_no, "2025", 20'000}.store_in(db);
    }
    a_payment{kim, "2024", -40'000}.store_in(db);
    a_workplace{lee}.store_in(db);
    a_dues_year{kim, "2025"}.store_in(db);
    a_pledge{kim, "20260301"}.store_in(db);
    a_row paid{"contract_list"};
    paid.with("con_date", chosen.con_date).with("pers_no", kim).with("con_money", 300'000).store_in(db);
}

struct at {
    connection &db, &local;
    save_steps save;
};

const std::pair<const char*, std::function<void(at&)>> acts[] = {
    {"kinds of members", [](at& a) { member_kinds(a.db); }},
    {"fee of a kind", [](at& a) { fee_of_kind(a.db, "20"); }},
    {"year of dues", [](at& a) { read_header(a.db, year); }},
    {"places of payment", [](at& a) { receipt_places(a.db); }},
    {"payment", [](at& a) { read_payment(a.db, kim, "1"); }},
    {"console before mem_in_dlg", [](at& a) { has_header_of_year(a.db, kim, "2026"); }},
    {"mem_in_dlg", [](at& a) { add_year(a.save, this_year, "30", "70000", today); }},
    {"mem_in_dlg, no kind", [](at& a) { add_year(a.save, this_year, "", "70000", today); }},
    {"mem_ud_dlg", [](at& a) { change_year(a.save, year, "30", "70000", today); }},
    {"mem_ud_dlg, more paid back than in",
     [](at& a) {
         change_year(a.save, {kim, "2024"}, "30", "70000", today);
     }},
    {"mem_del_dlg", [](at& a) { delete_year(a.save, lifetime); }},
    {"dues_in_dlg, head office",
     [](at& a) {
         add_payment(a.save, year, "20", {"20261101", "", "30000", "1"}, today);
     }},
    {"dues_in_dlg, branch",
     [](at& a) {
         add_payment(a.save, year, "20", {"", "20261102", "10000", "2"}, today);
     }},
    {"dues_in_dlg, no year",
     [](at& a) {
         add_payment(a.save, none, "", {"20261101", "", "30000", "1"}, today);
     }},
    {"dues_ud_dlg",
     [](at& a) {
         change_payment(a.save, year, "1", {"20261101", "", "60000", "1"}, today);
     }},
    {"dues_ud_dlg, no place",
     [](at& a) {
         change_payment(a.save, year, "1", {"", "", "10000", ""}, today);
     }},
    {"dues_del_dlg", [](at& a) { delete_payment(a.save, year, "1"); }},
    {"pledge", [](at& a) { find_pledge(a.db, kim); }},
    {"con_in_dlg, the pledge", [](at& a) { add_pledge(a.save, lee, "1000000", today); }},
    {"con_in_dlg, an instalment",
     [](at& a) {
         add_instalment(a.save, kim, "20260301", {"20261103", "200000"});
     }},
    {"instalments of a day", [](at& a) { instalments_of_day(a.db, chosen); }},
    {"con_ud_dlg",
     [](at& a) {
         change_instalment(a.save, chosen, {"20261103", "200000"}, "1");
     }},
    {"con_del_dlg", [](at& a) { delete_instalment(a.save, chosen); }},
    {"dues_search_dlg, head office",
     [](at& a) { copy_members(a.db, a.local, dues_query("20260101", today, "1", "00")); }},
    {"dues_search_dlg, branch",
     [](at& a) { copy_members(a.db, a.local, dues_query("20260101", today, "0", "10")); }},
    {"kinds in pers_receipt_dlg", [](at& a) { receipt_member_kinds(a.db); }},
    {"pers_receipt_dlg by name",
     [](at& a) {
         queue_receipts(a.db, a.local, {receipt_item::name, "김O'", "20", "0"});
     }},
    {"pers_receipt_dlg by number, branch",
     [](at& a) {
         queue_receipts(a.db, a.local, {receipt_item::resident_number, "0'1", "20", "10"});
     }},
    {"pers_receipt_dlg by licence",
     [](at& a) {
         queue_receipts(a.db, a.local, {receipt_item::licence, "제'7", "20", "0"});
     }},
    {"pers_receipt_dlg by nothing",
     [](at& a) {
         queue_receipts(a.db, a.local, {receipt_item::name, "", "30", "10"});
     }},
    {"dues_receipt_dlg, head office",
     [](at& a) {
         queue_receipts(a.db, a.local, period_receipts{paid_at::head_office, from, to, "0"});
     }},
    {"dues_receipt_dlg, branch",
     [](at& a) {
         queue_receipts(a.db, a.local, period_receipts{paid_at::branch, from, to, "10"});
     }},
};

} // namespace

class dues_journal_test : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void every_act_sends_its_statements()
    {
        for (const auto& [act, run] : acts) {
            running_client on{engine::sqlserver};
            fill(on.c.db_conn);
            at there{on.c.db_conn, on.c.local_conn, save_steps{on.c.db_conn}};
            on.its_register.sql_server().take_batches();
            run(there);
            const QString difference =
                first_difference(golden_block("dues.txt", act), on.its_register.sql_server().take_batches());
            QVERIFY2(difference.isEmpty(), qUtf8Printable(act + (": " + difference)));
        }
    }
};

QTEST_APPLESS_MAIN(dues_journal_test)
#include "dues_journal_test.moc"
