#include "demo/edges.h"

#include <array>

namespace orvo::demo {

std::span<const edge> edges()
{
    static constexpr std::array all = std::to_array<edge>({
        {.name = "오'하나"},
        {.name = "남궁보람"},
        {.name = "김뷁"},
        {.mail_place = "발송중지"},
        {.email = ""},
        {.branch = 0},
        {.works = edge::workplaces::none},
        {.mail_place = "직장", .works = edge::workplaces::none},
        {.works = edge::workplaces::alike},
        {.works = edge::workplaces::punctuated},
        {.tel = ""},
        {.tel = "1234567"},
        {.tel = "03112345"},
        {.tel = "043123456"},
        {.tel = "0331234567"},
        {.tel = "05112345678"},
        {.tel = "070123456789"},
        {.tel = "0212345"},
        {.tel = "02123456"},
        {.tel = "021234567"},
        {.tel = "0212345678"},
        {.tel = "02123456789"},
        {.mobile = ""},
        {.mobile = "0110123456"},
    });
    return all;
}

} // namespace orvo::demo
