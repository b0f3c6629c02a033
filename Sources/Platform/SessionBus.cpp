#include "Platform/SessionBus.h"

namespace stintbook::sessionbus {

namespace {

constexpr const char* localDays = "localDays";
constexpr const char* before = "before";
constexpr const char* allHistory = "allHistory";

struct Spelling {
    ScopeArguments operator()(const LocalDayRange& range) const
    {
        return {localDays, dayID(range.from()), dayID(range.through())};
    }
    ScopeArguments operator()(const DaysBefore& days) const { return {before, dayID(days.cutoff), {}}; }
    ScopeArguments operator()(const AllHistory& /*all*/) const { return {allHistory, {}, {}}; }
};

} // namespace

ScopeArguments argumentsOf(const ActivityDataScope& scope)
{
    return std::visit(Spelling{}, scope);
}

std::optional<ActivityDataScope> scopeFrom(const ScopeArguments& arguments)
{
    const auto& [scope, fromID, throughID] = arguments;
    if (scope == allHistory && fromID.empty() && throughID.empty())
        return AllHistory{};
    auto from = dayFromID(fromID);
    if (!from)
        return std::nullopt;
    if (scope == before && throughID.empty())
        return DaysBefore{*std::move(from)};
    auto through = dayFromID(throughID);
    if (scope != localDays || !through)
        return std::nullopt;
    return LocalDayRange::between(*std::move(from), *std::move(through));
}

} // namespace stintbook::sessionbus
