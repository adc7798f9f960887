#pragma once

#include "demo/loader.h"
#include "demo/people.h"

#include <vector>

namespace orvo::demo {

/// One concern each; what they fill must be empty.
void fill_members(loader& into, const plan& what, const std::vector<person>& people);
void fill_web_logins(loader& into, const plan& what, const std::vector<person>& people);
void fill_workplaces(loader& into, const plan& what, const std::vector<person>& people);
void fill_dues(loader& into, const plan& what, const std::vector<person>& people);
void fill_payments(loader& into, const plan& what, const std::vector<person>& people);
void fill_pledges(loader& into, const plan& what, const std::vector<person>& people);

} // namespace orvo::demo
