#include "dues/pledges/pledge_dialogs.h"
#include "support/builders.h"
#include "support/engines.h"
#include "support/fake_desk.h"
#include "support/screens.h"
#include "support/test_register.h"
#include "ui/member_panels.h"

using namespace orvo;

namespace {

const QString kim = QStringLiteral("9001011234568");
const QString today = QStringLiteral("20261122");

QString stored(connection& db)
{
    QStringList all;
    for (const auto row : db.read("select * from contract"))
        all += QStringList{row.text("con_day"), row.text("con_amount"), row.text("con_money"),
                           row.text("con_finish")}
                   .join(u' ');
    for (const auto row : db.read("select * from contract_list where pers_no='" + kim.toStdString() + "'"))
        all += QStringList{row.text("con_day"), row.text("con_date"), row.text("con_money")}.join(u' ');
    return all.join(u'|');
}

/// "pledge 30000", "pay 500", "alter 1 700 1" and "drop 1" by the number of the instalment.
void take_step(connection& db, const QStringList& step)
{
    save_steps save{db};
    const chosen_instalment chosen{kim, "20261121", step[1]};
    if (step[0] == "pledge")
        add_pledge(save, kim, step[1], today);
    else if (step[0] == "pay")
        add_instalment(save, kim, "20'6", {"20261121", step[1]}, );
    else if (step[0] == "alter")
        change_instalment(save, chosen, {"19700101", step[2]}, step[3]);
    else
        delete_instalment(save, chosen);
}

/// The member's pledge over 1,000,000 is given up; two instalments of one day, the second of which is chosen.
struct at_console : running_client, fake_desk, member_panels {
    int refreshed = 0;
    std::unique_ptr<QDialog> dlg;
    connection& db = c.db_conn;

    at_console() : running_client{engine::embedded}, member_panels{static_cast<desk&>(*this)}
    {
        c.selected_pers_no = kim;
        c.cur_con_date = "20260315";
        c.cur_con_id = "2";
    }
    void store_pledge()
    {
        a_pledge{kim, "20200101"}.with("con_finish", 1).with("con_money", 999).store_in(db);
        for (const int money : {30'000, 2'000})
            a_row{"contract_list"}
                .with("con_day", "20200101")
                .with("con_date", c.cur_con_date)
                .with("pers_no", kim)
                .with("con_money", money)
                .store_in(db);
        c.cur_con_day = "20200101";
    }
    void show_dues() override {}
    void show_dues_lines() override {}
    void show_contract() override { ++refreshed; }
    void show_company() override {}
    void open(const QString& name)
    {
        name == "con_in"   ? dlg = std::make_unique<con_in_dlg>(c, *this, nullptr)
        : name == "con_ud" ? dlg = std::make_unique<con_ud_dlg>(c, *this, nullptr)
                           : dlg = std::make_unique<con_del_dlg>(c, *this, nullptr);
        bring_up(*dlg);
    }
    /// Enter, Tab, Down and Delete by their first letters (X is Delete), others as they are. What was said
    /// and where the focus is, or how often the console was refreshed.
    QString press(const QString& keys)
    {
        static const std::map<QChar, Qt::Key> named{
            {'E', Qt::Key_Return}, {'T', Qt::Key_Tab}, {'D', Qt::Key_Down}, {'X', Qt::Key_Delete}};
        for (const QChar key : keys)
            named.contains(key) ? QTest::keyClick(dlg->focusWidget(), named.at(key))
                                : QTest::keyClick(dlg->focusWidget(), key.toLatin1());
        return say.take_texts().join(u'|') + '@' +
               (dlg->isVisible() ? dlg->focusWidget()->objectName() : QString::number(refreshed));
    }
};

const QString missing = QStringLiteral("금액 및 날짜를 입력하지 않으셨습니다.");
const QString of_kim = QStringLiteral("|20200101 20260315 30000");
const QString before = "20200101 1000000 999 1" + of_kim + "|20200101 20260315 2000";

} // namespace

class pledges_test : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void the_sum_follows_the_instalments_data() { engines_under_test(); }
    void the_sum_follows_the_instalments()
    {
        FETCH_ENGINE(kind);
        const QString line = "|20'6 20261121 ";
        for (const QStringList& row : QList<QStringList>{
                 {"pledge 900", "20261122 900 0 0"},
                 {"pledge 900;pay 500;pay 700", "20261122 900 1200 0" + line + "500" + line + "700"},
                 {"pledge 900;pay 500;drop 1", "20261122 900 0 0"},
                 {"pledge 900;pay 500;alter 1 700 1", "20261122 900 700 1|20'6 19700101 700"},
                 {"pledge 900;pay 500;alter 1 700 1;pay 1", // stays given up
                  "20261122 900 701 1|20'6 19700101 700" + line + "1"},
                 {"pay 500", "|20'6 20261121 500"},
                 {"pledge 900;pay 2147483647;pay 2147483647",
                  "20261122 900 4294967294 0" + line + "2147483647" + line + "2147483647"}}) {
            running_client on{kind};
            a_row{"contract_list"}.with("pers_no", "8512122234567").with("con_money", 5).store_in(on.c.db_conn);
            on.c.db_conn.direct("delete from contract_list");
            for (const QString& step : row[0].split(u';'))
                take_step(on.c.db_conn, step.split(u' '));
            QCOMPARE(stored(on.c.db_conn), row[1]);
        }
    }
};

ORVO_SCREEN_TESTS(pledges_test)
#include "pledges_test.moc"
