#include "dues/receipts/rules/receipt_search.h"
#include "dues/rules/payments.h"
#include "dues/rules/pledges.h"
#include "dues/rules/yearly_dues.h"
#include "dues/search/dues_query.h"
#include "members/rules/member_record.h"
#include "support/builders.h"
#include "support/golden.h"
#include "support/test_register.h"

using namespace orvo;

namespace {

const QString kim = "90'1", lee = "90'2", today = "20261122", from = "20250301", to = "20250331";
const dues_year year{kim, "2025"}, refunded{kim, "2024"}, opened{kim, "2026"}, no_year{kim, ""};
const payment to_head{"20261101", "", "30000", "1"}, to_branch{"", "20261102", "10000", "2"};
const payment too_much{"20261101", "", "60000", "1"}, nowhere{"", "", "10000", ""};
const chosen_instalment chosen{kim, "20260315", "1"};
const instalment paid{"20261103", "200000"};
const member_receipts by_name{receipt_item::name, "김O'", "20", "0"}, all{receipt_item::name, "", "30", "10"};
const member_receipts by_number{receipt_item::resident_number, "0'1", "20", "10"};
const member_receipts by_licence{receipt_item::licence, "제'7", "20", "0"};
const period_receipts head{paid_at::head_office, from, to, "0"}, branch{paid_at::branch, from, to, "10"};
const member_query settled = dues_query(from, to, "1", "00"), open = dues_query(from, to, "0", "10");

/// Kim owes 30000 of 2025, got money back for 2024 and has paid the first instalment of a pledge; Lee's mail
/// goes to the workplace, a third member's is stopped.
struct at {
    at()
    {
        for (const auto& [pers_no, mail] : {std::pair{kim, "자택"}, {lee, "직장"}, {"90'3", "발송중지"}}) {
            a_member{pers_no}.named("김O'영희").with("get_mail_place", mail).store_in(db);
            a_payment{pers_no, "2025", 20'000}.store_in(db);
        }
        a_payment{kim, "2024", -40'000}.store_in(db);
        a_dues_year{kim, "2025"}.store_in(db);
        a_row first{"contract_list"};
        first.with("con_date", chosen.con_date).with("pers_no", kim).with("con_money", 300'000).store_in(db);
        on.its_register.sql_server().take_batches();
    }
    void queue(const auto& wanted) { queue_receipts(db, local, wanted, {"head", on.c.now()}); }

    running_client on{engine::sqlserver};
    connection &db = on.c.db_conn, &local = on.c.local_conn;
    void store(planned_save what) { save{std::move(what), db, local}.carry_out(); }
};

const std::pair<const char*, std::function<void(at&)>> acts[] = {
    {"kinds of members", [](at& a) { ask(a.db, member_kinds()); }},
    {"fee of a kind", [](at& a) { fee_of_kind(a.db, "20"); }},
    {"year of dues", [](at& a) { ask(a.db, header_of(year)); }},
    {"places of payment", [](at& a) { ask(a.db, receipt_places()); }},
    {"payment", [](at& a) { ask(a.db, payment_of(kim, "1")); }},
    {"console before mem_in_dlg", [](at& a) { has_header_of_year(a.db, kim, "2026"); }},
    {"mem_in_dlg", [](at& a) { a.store(add_year(opened, "30", "70000", today)); }},
    {"mem_in_dlg, no kind", [](at& a) { a.store(add_year(opened, "", "70000", today)); }},
    {"mem_ud_dlg", [](at& a) { a.store(change_year(year, "30", "70000", today, {})); }},
    {"mem_ud_dlg, paid back", [](at& a) { a.store(change_year(refunded, "30", "70000", today, {})); }},
    {"mem_del_dlg", [](at& a) { a.store(delete_year(dues_year(kim, "평생회원"))); }},
    {"dues_in_dlg, head office", [](at& a) { a.store(add_payment(year, "20", to_head, today, {})); }},
    {"dues_in_dlg, branch", [](at& a) { a.store(add_payment(year, "20", to_branch, today, {})); }},
    {"dues_in_dlg, no year", [](at& a) { a.store(add_payment(no_year, "", to_head, today, {})); }},
    {"dues_ud_dlg", [](at& a) { a.store(change_payment(year, "1", too_much, today, {})); }},
    {"dues_ud_dlg, no place", [](at& a) { a.store(change_payment(year, "1", nowhere, today, {})); }},
    {"dues_del_dlg", [](at& a) { a.store(delete_payment(year, "1")); }},
    {"pledge", [](at& a) { ask(a.db, pledge_of(kim)); }},
    {"con_in_dlg, the pledge", [](at& a) { a.store(add_pledge(lee, "1000000", today)); }},
    {"con_in_dlg, an instalment", [](at& a) { a.store(add_instalment(kim, "20260301", paid, {})); }},
    {"instalments of a day", [](at& a) { ask(a.db, instalments_of_day(chosen)); }},
    {"con_ud_dlg", [](at& a) { a.store(change_instalment(chosen, paid, "1", {})); }},
    {"con_del_dlg", [](at& a) { a.store(delete_instalment(chosen)); }},
    {"dues_search_dlg, head office", [](at& a) { copy_members(a.db, a.local, settled); }},
    {"dues_search_dlg, branch", [](at& a) { copy_members(a.db, a.local, open); }},
    {"kinds in pers_receipt_dlg", [](at& a) { receipt_member_kinds(a.db); }},
    {"pers_receipt_dlg by name", [](at& a) { a.queue(by_name); }},
    {"pers_receipt_dlg by number, branch", [](at& a) { a.queue(by_number); }},
    {"pers_receipt_dlg by licence", [](at& a) { a.queue(by_licence); }},
    {"pers_receipt_dlg by nothing", [](at& a) { a.queue(all); }},
    {"dues_receipt_dlg, head office", [](at& a) { a.queue(head); }},
    {"dues_receipt_dlg, branch", [](at& a) { a.queue(branch); }},
};

} // namespace

class dues_journal_test : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void every_act_sends_its_statements()
    {
        for (const auto& [act, run] : acts) {
            at there;
            run(there);
            const QStringList arrived = there.on.its_register.sql_server().take_batches();
            const QString apart = first_difference(golden_block("dues.txt", act), arrived);
            QVERIFY2(apart.isEmpty(), qUtf8Printable(act + (": " + apart)));
        }
    }
};

QTEST_APPLESS_MAIN(dues_journal_test)
#include "dues_journal_test.moc"
