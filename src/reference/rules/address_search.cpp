#include "reference/rules/address_search.h"

#include <QStringList>

namespace orvo {

std::vector<found_address> find_addresses(connection& local, const QString& dong)
{
    const rows hits = local.read("select * from zip where dong like '%{str_txt}%'", {{"str_txt", dong}});
    std::vector<found_address> found;
    found.reserve(hits.size());
    for (const auto row : hits) {
        const QString post = row.text("post");
        QStringList parts;
        for (const char* column : {"do", "gu", "dong", "li", "island", "fir", "sec"})
            parts.append(row.text(column));
        found.push_back({post.left(3) + u'-' + post.right(3), parts.join(u' ')});
    }
    return found;
}

bool has_postal_codes(connection& local)
{
    return local.number("select count(*) as cnt from zip") > 0;
}

} // namespace orvo
