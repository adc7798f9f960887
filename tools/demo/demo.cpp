#include "demo/demo.h"

#include "db/schema/schema.h"
#include "demo/codes.h"
#include "demo/fillers.h"
#include "setup/operators.h"

#include <array>

namespace orvo::demo {

namespace {

constexpr std::array the_operators = std::to_array<demo_operator>({
    {"head", "head1234", "본회 담당자", 0, 1, 1, 1},
    {"seoul", "seoul1234", "서울지부 담당자", 10, 1, 1, 0},
    {"guest", "guest1234", "열람 담당자", 0, 0, 0, 0},
});

QString text_of(std::string_view utf8)
{
    return QString::fromUtf8(utf8.data(), static_cast<qsizetype>(utf8.size()));
}

void add_operators(connection& server)
{
    for (const demo_operator& each : the_operators) {
        const QString id = text_of(each.id);
        // The password that is told must be the one that lets in.
        server.write("delete from admin_tbl where admin_id='{id}'", {{"id", id}});
        setup::add_operator(server, {id, text_of(each.password), text_of(each.name),
                                     id + QStringLiteral("@association.example"), id, each.branch,
                                     each.author1 != 0, each.author2 != 0, each.author3 != 0});
    }
}

} // namespace

std::span<const demo_operator> operators()
{
    return the_operators;
}

std::string_view table_in_the_way(connection& server)
{
    for (const table& each : tables_of(database::server))
        if (each.name != "admin_tbl" &&
            server.number("select count(*) as cnt from " + std::string{each.name}) > 0)
            return each.name;
    return {};
}

void fill(connection& server, const plan& what, const report& tell)
{
    const std::vector<person> people = make_people(what);
    loader into{server, tell};
    transaction all_or_nothing{server};
    fill_codes(into, what.seed);
    add_operators(server);
    if (!people.empty()) {
        fill_members(into, what, people);
        fill_web_logins(into, what, people);
        fill_workplaces(into, what, people);
        fill_dues(into, what, people);
        fill_payments(into, what, people);
        fill_pledges(into, what, people);
    }
    all_or_nothing.commit();
}

} // namespace orvo::demo
