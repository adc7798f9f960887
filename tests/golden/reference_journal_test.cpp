#include "reference/rules/code_editor.h"
#include "support/builders.h"
#include "support/golden.h"
#include "support/test_register.h"

#include <QTest>

using namespace orvo;

class reference_journal_test : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void every_editor_sends_its_inserts()
    {
        running_client on{engine::sqlserver};
        connection& local = on.c.local_conn;
        a_row{"make_use_of", database::local}.with("code_use", -5).store_in(local);
        QCOMPARE(code_editors().size(), 18U);
        for (const code_editor& each : code_editors()) {
            on.its_register.sql_server().take_batches();
            const auto add = [&](const QString& name, const QString& more, int parent) {
                std::vector<column_text> texts{{each.name, "str_txt", name}};
                if (each.table == "deposit") {
                    texts.push_back({"deposit_add", "add_txt", more});
                    texts.push_back({"deposit_tel", "tel", more.isEmpty() ? "" : "0212345678"});
                }
                const values parents{
                    {"code_part", parent}, {"code_great", 30}, {"code_bran", parent}, {"code_big", 30}};
                add_code(local, on.c.db_conn, each, texts, parents);
            };
            add("서울", "", 100);
            add("O'Neill's 부산'", "종로구 '1'가", 100);
            add("대구", "", 200);
            const QString difference = first_difference(golden_block("reference.txt", each.dialog),
                                                        on.its_register.sql_server().take_batches());
            QVERIFY2(difference.isEmpty(), qUtf8Printable(each.dialog + (": " + difference)));
        }
    }
};

QTEST_APPLESS_MAIN(reference_journal_test)
#include "reference_journal_test.moc"
