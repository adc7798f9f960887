#include "support/saves.h"

#include "dues/rules/payments.h"
#include "dues/rules/pledges.h"
#include "dues/rules/yearly_dues.h"
#include "members/rules/member_update.h"
#include "members/rules/workplaces.h"
#include "support/a_new_member.h"
#include "support/builders.h"

namespace orvo {

namespace {

const QString today = QStringLiteral("20261122");
const dues_year of_2026{QStringLiteral("9001011234568"), QStringLiteral("2026")};
const QString& number = of_2026.pers_no;
const chosen_instalment first_instalment{number, "20260315", "1"};
const payment paid_before{"20260315", "20260315", "20000", "10"};

/// The member of that year, who owes 50,000 and has paid 20,000 by line 1; nothing of it settled. Line 3 is
/// what the payment under test looks like.
void store_a_year(connection& db)
{
    a_member{number}.store_in(db);
    a_dues_year{number, of_2026.val_year}.store_in(db);
    for (const qint64 paid : {20'000, 1'000})
        a_payment{number, of_2026.val_year, paid}.store_in(db);
    a_payment{number, of_2026.val_year, 10'000}
        .with("pers_mem_day", "20261121")
        .with("pers_mem_b_day", "")
        .with("code_receipt", 1)
        .with("pres_let_day", today)
        .store_in(db);
}

/// A pledge and one instalment of it by number 1, not summed up, which the instalment under test looks like.
void store_an_instalment(connection& db)
{
    a_pledge{number, "20200101"}.store_in(db);
    for (const char* day : {"20260315", "20261122"})
        a_row{"contract_list"}
            .with("con_day", "20200101")
            .with("con_date", day)
            .with("pers_no", number)
            .with("con_money", 5'000)
            .store_in(db);
    db.direct("update contract set con_money=30000");
}

/// Rows in all tables that a change or a deletion of the member goes through.
void store_everything(connection& db)
{
    store_a_year(db);
    store_an_instalment(db);
    a_workplace{number}.store_in(db);
    for (const char* table : {"id_tbl", "supplement", "std_h_tbl", "std_b_tbl", "have_lic_tbl"})
        a_row{table}.with("pers_no", number).store_in(db);
}

void store_two_workplaces(connection& db)
{
    store_everything(db);
    a_workplace{number}.former().store_in(db);
}

/// Another number and branch, so that every statement leaves a trace.
planned_save change_everything(connection& db)
{
    member_data typed = a_new_member().member;
    typed.pers_no1 = QStringLiteral("900102");
    typed.code_bran = QStringLiteral("30");
    const auto columns = edited_columns(typed, today);
    return change_member(number, columns, "kim", "secret",
                         values_before(columns, ask(db, row_on_server(number))->front()));
}

planned_save move_to_the_second_workplace(connection& db)
{
    const auto columns = workplace_columns(number, a_new_member().workplace, today);
    return change_workplace(number, "2", columns,
                            values_before(columns, read_workplace(db, QStringLiteral("2"))->front()));
}

} // namespace

const std::vector<save_under_test>& saves_under_test()
{
    static const std::vector<save_under_test> all{
        {"registration",
         [](connection& db) {
             a_dues_year{"7001011234567", "2026"}.store_in(db);
         },
         [](connection&) { return register_member(a_new_member(), today); }, 6, 6},
        {"a year is added", [](connection& db) { a_member{number}.store_in(db); },
         [](connection&) { return add_year(of_2026, "30", "50000", today); }, 2, 2},
        {"a year is changed", store_a_year,
         [](connection&) {
             return change_year(of_2026, "30", "80000", today, {"20", 50000, 50000});
         },
         4, 4},
        {"a year is deleted", store_a_year, [](connection&) { return delete_year(of_2026); }, 2, 2},
        {"a payment is added", store_a_year,
         [](connection& db) {
             return add_payment(of_2026, "20", {"20261121", "", "10000", "1"}, today,
                                ask(db, payment_ids_in(of_2026)));
         },
         4, 3},
        {"a payment is changed", store_a_year,
         [](connection&) {
             return change_payment(of_2026, "1", {"20261121", "", "10000", "2"}, today, paid_before);
         },
         4, 3},
        {"a payment is deleted", store_a_year, [](connection&) { return delete_payment(of_2026, "1"); }, 4,
         3},
        {"a pledge is made", [](connection&) {},
         [](connection&) { return add_pledge(number, "5000", today); }, 1, 1},
        {"an instalment is added", store_an_instalment,
         [](connection& db) {
             return add_instalment(number, "20200101", {today, "5000"}, ask(db, instalment_ids_of(number)));
         },
         3, 3},
        {"an instalment is changed", store_an_instalment,
         [](connection&) {
             return change_instalment(first_instalment, {"20260315", "7000"}, "1", "5000");
         },
         3, 3},
        {"an instalment is deleted", store_an_instalment,
         [](connection&) { return delete_instalment(first_instalment); }, 3, 3},
        {"a member is changed", store_everything, change_everything, 8, 8},
        {"a member is deleted", store_everything,
         [](connection&) { return delete_member(number, QStringLiteral("김영희")); }, 9, 9},
        {"a workplace is added", store_everything,
         [](connection& db) {
             return add_workplace(number, a_new_member().workplace, today, ask(db, workplace_ids_of(number)));
         },
         2, 2},
        {"a workplace is changed", store_two_workplaces, move_to_the_second_workplace, 2, 2},
        {"a workplace is deleted", store_everything,
         [](connection&) { return delete_workplace(number, "1"); }, 1, 1},
    };
    return all;
}

} // namespace orvo
