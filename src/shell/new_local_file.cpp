#include "shell/new_local_file.h"

#include "base/amount.h"
#include "client/client.h"
#include "client/local_file.h"

#include <QFile>

#include <algorithm>

namespace orvo {

namespace {

const QString confirmation = QStringLiteral("확인");

/// Empty for what the program keeps for itself.
QString in_words(std::string_view name)
{
    static const std::pair<std::string_view, QString> words[]{
        {"zip", QStringLiteral("우편번호")},
        {"person_m_tbl", QStringLiteral("검색 목록")},
        {"print_tbl", QStringLiteral("영수증 대기열")},
        {"drafts", QStringLiteral("작성 중이던 내용")},
        {"recent_words", QStringLiteral("최근 검색어")},
        {"recent_members", QStringLiteral("최근에 연 회원")},
        {"print_made", {}},
        {"last_login", {}},
        {"wrong_passwords", {}}};
    const auto found = std::ranges::find(words, name, &std::pair<std::string_view, QString>::first);
    return found == std::end(words) ? QStringLiteral("그 밖의 자료") : found->second;
}

bool has_postal_codes(const std::vector<carried_table>& carried)
{
    return std::ranges::any_of(carried,
                               [](const carried_table& each) { return each.name == "zip" && each.rows > 0; });
}

} // namespace

bool offer_new_local_file(const client& c)
{
    const bool is_there = QFile::exists(file_of(c.server, database::local));
    return c.say.ask(
        {is_there ? QStringLiteral("로컬 파일 orvo.mdb가 손상되었습니다. 새로 만들까요?\n"
                                   "우편번호, 작성 중이던 내용, 영수증 대기열, 최근 검색은 읽을 수 있는 만큼 "
                                   "옮기고, 손상된 파일은 orvo.mdb.damaged로 남깁니다.")
                  : QStringLiteral("로컬 파일 orvo.mdb가 없습니다. 새로 만들까요?\n"
                                   "코드표는 서버에서 받지만, 우편번호는 관리자가 다시 넣어야 합니다."),
         confirmation, sign::exclamation},
        QStringLiteral("새로 만들기"), QStringLiteral("그만두기"), answer::first);
}

void make_new_local_file(client& c)
{
    const bool was_there = QFile::exists(file_of(c.server, database::local));
    const std::vector<carried_table> carried = remake_local_file(c);
    if (!was_there)
        return;
    QStringList lines;
    for (const carried_table& each : carried)
        if (const QString word = in_words(each.name); each.rows > 0 && !word.isEmpty())
            lines.append(QStringLiteral("%1 %2건").arg(word, with_separators(each.rows)));
    QString text = QStringLiteral("로컬 파일을 새로 만들었습니다.\n옮긴 자료: %1")
                       .arg(lines.isEmpty() ? QStringLiteral("없음") : lines.join(QStringLiteral(", ")));
    if (carried.empty() || !std::ranges::all_of(carried, &carried_table::is_whole))
        text += QStringLiteral("\n읽을 수 없는 자료는 옮기지 못했습니다.");
    if (!has_postal_codes(carried))
        text += QStringLiteral("\n이 컴퓨터에는 우편번호가 없습니다. 관리자에게 우편번호 넣기"
                               "(orvo_db import-zip)를 요청하십시오.");
    c.say.tell({text, confirmation, sign::information});
}

} // namespace orvo
