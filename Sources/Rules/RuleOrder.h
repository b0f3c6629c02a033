#pragma once

#include <algorithm>
#include <utility>
#include <vector>

namespace stintbook {

/// The order of the rule list: smaller priorities first, ties by the identifier's text.
template <typename Rule> std::vector<Rule> inListOrder(std::vector<Rule> rules)
{
    std::ranges::stable_sort(rules, {}, [](const Rule& rule) { return std::pair(rule.priority, rule.id); });
    return rules;
}

/// What the engines walk: the rules that are switched on, in list order.
template <typename Rule> std::vector<Rule> enabledInListOrder(std::vector<Rule> rules)
{
    std::erase_if(rules, [](const Rule& rule) { return !rule.isEnabled; });
    return inListOrder(std::move(rules));
}

} // namespace stintbook
