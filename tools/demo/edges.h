#pragma once

#include <optional>
#include <span>
#include <string_view>

namespace orvo::demo {

/// A rare shape that a member's row can have. What it leaves open is drawn as for any member.
struct edge {
    enum class workplaces { any, none, alike, punctuated };

    std::optional<std::string_view> name = {};
    std::optional<std::string_view> tel = {};
    std::optional<std::string_view> mobile = {};
    std::optional<std::string_view> email = {};
    std::optional<std::string_view> mail_place = {};
    std::optional<int> branch = {};
    workplaces works = workplaces::any;
};

std::span<const edge> edges();

} // namespace orvo::demo
