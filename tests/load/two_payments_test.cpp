#include "dues/rules/payments.h"
#include "dues/rules/yearly_dues.h"
#include "support/builders.h"
#include "support/engines.h"
#include "support/test_register.h"

#include <QTest>

using namespace orvo;

namespace {

const QString today = QStringLiteral("20261122");
const dues_year of_2026{QStringLiteral("9001011234568"), QStringLiteral("2026")};

void pay(connection& db, const char* amount)
{
    save{add_payment(of_2026, "20", {today, "", QString::fromLatin1(amount), "1"}, today, {}), db, db}
        .carry_out();
}

/// What remains of the year and whether it is marked as paid: "20000 0".
QString balance(connection& db)
{
    const rows found =
        db.read("select * from dues_h_tbl where pers_no='{pers_no}'", {{"pers_no", of_2026.pers_no}});
    return found.front().text("yet_money") + u' ' + found.front().text("incom_flag");
}

/// Does something else behind a statement of the connection that it watches.
class interrupting_watch : public line_watch {
public:
    bool try_again(const db_failure&) override { return false; }
    bool keep_waiting(std::chrono::milliseconds, bool) override { return true; }
    void done_waiting() override
    {
        if (++statements_ == behind)
            then();
    }

    int behind = 0;
    std::function<void()> then;

private:
    int statements_ = 0;
};

} // namespace

/// Two clients pay for one member's year at once: the whole save of one falls between two statements of the
/// other's. No payment is lost by it, but the one that comes last may write a balance that it took before the
/// other's payment was there. The association accepts that until the next payment.
class two_payments_test : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void the_next_payment_settles_both_data()
    {
        QTest::addColumn<engine>("kind");
        QTest::addColumn<int>("behind");
        QTest::addColumn<QString>("left");
        for (const engine kind : engines) {
            const auto row = [kind](int behind, const char* what, const char* left) {
                QTest::addRow("%s, %s", name_of(kind), what) << kind << behind << QString{left};
            };
            row(1, "behind the payment", "0 1");
            row(2, "behind the sum and the dues", "20000 0");
            row(3, "behind the balance", "0 1");
        }
    }
    void the_next_payment_settles_both()
    {
        FETCH_ENGINE(kind);
        test_register its_register{kind};
        connection one = its_register.connect();
        connection other = its_register.connect();
        a_member{of_2026.pers_no}.store_in(one);
        a_dues_year{of_2026.pers_no, of_2026.val_year, 50'000}.store_in(one);

        interrupting_watch watch;
        QFETCH(int, behind);
        watch.behind = behind;
        watch.then = [&other] { pay(other, "20000"); };
        one.set_watch(&watch);
        pay(one, "30000");
        one.set_watch(nullptr);

        const payments_of_year both = ask(other, payments_in(of_2026));
        QCOMPARE(both.count, 2);
        QCOMPARE(both.sum, 50'000);
        QTEST(balance(other), "left");
        pay(one, "1000");
        QCOMPARE(balance(other), QStringLiteral("-1000 1"));
    }
};

QTEST_GUILESS_MAIN(two_payments_test)
#include "two_payments_test.moc"
