#include "members/rules/recent.h"

namespace orvo {

namespace {

constexpr std::size_t kept = 8;
constexpr qsizetype longest_word = 100; // a pasted page is no word to come back to

QString stamp(const QDateTime& now)
{
    return now.toString(QStringLiteral("yyyyMMddHHmmsszzz"));
}

} // namespace

void remember_word(connection& local, const QString& operator_id, int item, const QString& word,
                   const QDateTime& now)
{
    if (word.size() > longest_word)
        return;
    const values given{{"admin_id", operator_id}, {"item", item}, {"word", word}, {"used_at", stamp(now)}};
    local.write("delete from recent_words where admin_id='{admin_id}' and item='{item}' and word='{word}'",
                given);
    local.write("insert into recent_words(admin_id,item,word,used_at) values "
                "('{admin_id}','{item}','{word}','{used_at}')",
                given);
    const rows all =
        local.read("select used_at from recent_words where admin_id='{admin_id}' and item='{item}' "
                   "order by used_at desc",
                   given);
    if (all.size() > kept)
        local.write(
            "delete from recent_words where admin_id='{admin_id}' and item='{item}' and used_at<'{oldest}'",
            {{"admin_id", operator_id}, {"item", item}, {"oldest", all[kept - 1].text("used_at")}});
}

QStringList recent_words(connection& local, const QString& operator_id, int item)
{
    QStringList words;
    const rows all = local.read("select word from recent_words where admin_id='{admin_id}' and item='{item}' "
                                "order by used_at desc",
                                {{"admin_id", operator_id}, {"item", item}});
    for (const auto row : all)
        words.append(row.text("word"));
    return words;
}

void remember_member(connection& local, const QString& operator_id, const recent_member& member,
                     const QDateTime& now)
{
    const values given{{"admin_id", operator_id},
                       {"pers_no", member.pers_no},
                       {"pers_name", member.pers_name},
                       {"used_at", stamp(now)}};
    local.write("delete from recent_members where admin_id='{admin_id}' and pers_no='{pers_no}'", given);
    local.write("insert into recent_members(admin_id,pers_no,pers_name,used_at) values "
                "('{admin_id}','{pers_no}','{pers_name}','{used_at}')",
                given);
    const rows all = local.read(
        "select used_at from recent_members where admin_id='{admin_id}' order by used_at desc", given);
    if (all.size() > kept)
        local.write("delete from recent_members where admin_id='{admin_id}' and used_at<'{oldest}'",
                    {{"admin_id", operator_id}, {"oldest", all[kept - 1].text("used_at")}});
}

std::vector<recent_member> recent_members(connection& local, const QString& operator_id)
{
    std::vector<recent_member> members;
    const rows all = local.read("select pers_no,pers_name from recent_members where admin_id='{admin_id}' "
                                "order by used_at desc",
                                {{"admin_id", operator_id}});
    for (const auto row : all)
        members.push_back({row.text("pers_no"), row.text("pers_name")});
    return members;
}

} // namespace orvo
