#include "reference/rules/code_editor.h"
#include "support/builders.h"
#include "support/golden.h"
#include "support/test_register.h"

using namespace orvo;

class reference_journal_test : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void every_editor_sends_its_inserts()
    {
        running_client on{engine::sqlserver};
        a_row{"make_use_of", database::local}.with("code_use", -5).store_in(on.c.local_conn);
        QCOMPARE(code_editors().size(), 18U);
        for (const code_editor& each : code_editors()) {
            on.its_register.sql_server().take_batches();
            const auto add = [&](const char* name, const char* address, const char* telephone, int parent) {
                std::vector<column_text> texts{{each.name, "str_txt", name}};
                if (each.table == "deposit")
                    texts.insert(texts.end(),
                                 {{"deposit_add", "add_txt", address}, {"deposit_tel", "tel", telephone}});
                add_code(
                    on.c.local_conn, on.c.db_conn, each, texts,
                    {{"code_part", parent}, {"code_great", 30}, {"code_bran", parent}, {"code_big", 30}});
            };
            add("서울", "", "", 100);
            add("O'Neill's 부산'", "종로구 '1'가", "0212345678", 100);
            add("대구", "", "", 200);
            const QStringList arrived = on.its_register.sql_server().take_batches();
            const QString apart = first_difference(golden_block("reference.txt", each.dialog), arrived);
            QVERIFY2(apart.isEmpty(), qUtf8Printable(each.dialog + (": " + apart)));
        }
    }
};

QTEST_APPLESS_MAIN(reference_journal_test)
#include "reference_journal_test.moc"
