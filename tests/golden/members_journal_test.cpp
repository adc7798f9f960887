#include "members/rules/member_record.h"
#include "members/rules/member_search.h"
#include "members/rules/member_update.h"
#include "members/rules/registration.h"
#include "members/rules/workplaces.h"
#include "shell/login.h"
#include "support/golden.h"
#include "support/test_register.h"

#include <QTest>

using namespace orvo;

namespace {

const QString today = QStringLiteral("20261122");
const QString number = QStringLiteral("9001011234568");
using three = std::array<QString, 3>;

/// Values that tell the columns apart, and apostrophes in what is typed freely.
const workplace_data full_place("한빛'초등학교'", "100", "10", "77", "202003", "급식'과", "11", "12", "13",
                                "462120", "성남 '중원'구", "0311234567", "0312345678",
                                std::array<QString, 4>{"21", "22", "23", "24"}, three{"31", "32", "33"},
                                "2,500", "40", "1", "2", "3", "1", "", "1");
const member_data full_member("900101", "1234568", "제12-'3'호", "김'영희", false, "3", "기혼", "135010",
                              "서울 '한빛' 아파트", three{"02", "1234", "5678"}, three{"010", "2345", "6789"},
                              "", "10", "20", "1", "4", "5", "60", "05", "07", "영양사님", "직장", "3200",
                              std::array<bool, 7>{true, false, true, false, false, true, false}, "제6-1", "",
                              "50", "70", "8");
/// What must be there and what the forms propose, and a number below zero.
const member_data bare_member("000101", "4234560", "", "이철수", true, "", "미혼", "", "",
                              three{"02", "1234", "5678"}, three{}, "@", "10", "20", "1", "", "", "", "", "",
                              "영양사님", "자택", "-7", std::array<bool, 7>{}, "", "", "", "", "");
const workplace_data former_place("빈칸", "", "", "", "", "", "", "", "", "", "", "", "", {}, {}, "", "", "",
                                  "", "", "0", "202412", "0");
const new_member paid_in_full(full_member, "20", "50000", "50000", "1000000", "20261101", "20261102", "6",
                              full_place);
const new_member paid_in_part(bare_member, "10", "1000000", "300000", "", today, today, "", {});
const new_member money_given_back(bare_member, "20", "50000", "-1000", "", today, today, "", {});

/// A client on a register of its own, which is empty.
struct at_work {
    running_client on{engine::sqlserver};
    connection& db = on.c.db_conn;
    void store(planned_save what) { save{std::move(what), db, on.c.local_conn}.carry_out(); }
    void search(const char* session_branch)
    {
        const char* keys[] = {"김'영", "9001011", "제12", "한빛'초", "o'neil_@"}; // as the list has the items
        for (int item = 0; item < 5; ++item)
            copy_members(db, on.c.local_conn, search_query(search_item(item), keys[item], session_branch));
    }
    void click() { open_records(db, number); }
    void add(const new_member& typed)
    {
        is_registered(db, typed.member.pers_no());
        store(register_member(typed, today));
    }
    void change(const QString& old, const member_data& typed, const char* id, const char* passwd)
    {
        store(change_member(old, edited_columns(typed, today), id, passwd, {}));
    }
    void change(const workplace_data& typed)
    {
        store(change_workplace(number, "1", workplace_columns(number, typed, today), {}));
    }
};

const std::pair<const char*, void (*)(at_work&)> acts[] = {
    {"login", [](auto& at) { log_in(at.on.c, "d'arc", "비밀'번호 "); }},
    {"searches of head office", [](auto& at) { at.search("00"); }},
    {"searches of a branch", [](auto& at) { at.search("07"); }},
    {"member clicked twice", [](auto& at) { at.click(), at.click(); }},
    {"dues year clicked", [](auto& at) { dues_lines(at.db, number, "2026"); }},
    {"lifetime dues clicked", [](auto& at) { dues_lines(at.db, number, "평생회원"); }},
    {"identifier checked", [](auto& at) { is_id_free(at.db, "영희's"); }},
    {"registration paid in full", [](auto& at) { at.add(paid_in_full); }},
    {"registration paid in part", [](auto& at) { at.add(paid_in_part); }},
    {"money given back", [](auto& at) { at.add(money_given_back); }},
    {"number changed", [](auto& at) { at.change("9001021234562", full_member, "영희's", ""); }},
    {"member changed", [](auto& at) { at.change("0001014234560", bare_member, "", "o'ne"); }},
    {"member deleted", [](auto& at) { at.store(delete_member(number, {})); }},
    {"workplaces searched", [](auto& at) { find_workplaces(at.db, "한빛'초"); }},
    {"workplace copied", [](auto& at) { read_workplace(at.db, "1"); }},
    {"primary workplace added", [](auto& at) { at.store(add_workplace(number, full_place, today, {})); }},
    {"former workplace added", [](auto& at) { at.store(add_workplace(number, former_place, today, {})); }},
    {"workplace opened", [](auto& at) { read_workplace_of(at.db, number, "1"); }},
    {"workplace made primary", [](auto& at) { at.change(full_place); }},
    {"workplace made a former one", [](auto& at) { at.change(former_place); }},
    {"workplace deleted", [](auto& at) { at.store(delete_workplace(number, "1")); }},
};

} // namespace

class members_journal_test : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void what_arrives_is_what_is_written()
    {
        for (const auto& [name, run] : acts) {
            at_work at;
            run(at);
            const QString difference = first_difference(golden_block("members.txt", name),
                                                        at.on.its_register.sql_server().take_batches());
            QVERIFY2(difference.isEmpty(), qPrintable(QLatin1String(name) + u' ' + difference));
        }
    }
};

QTEST_MAIN(members_journal_test)
#include "members_journal_test.moc"
