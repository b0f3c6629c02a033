#include "Export/ExportFieldSet.h"

#include <algorithm>
#include <ranges>

namespace stintbook {

ExportFieldSet ExportFieldSet::standard(ExportMode mode)
{
    const bool isDetailed = mode == ExportMode::detailed;
    return {
        .includesDate = isDetailed,
        .includesClient = true,
        .includesProject = true,
        .includesDuration = true,
        .includesTimeOfDay = isDetailed,
        .includesDescription = isDetailed,
        .includesBillableState = true,
        .includesRateAndAmount = true,
    };
}

std::optional<ExportFieldSet> ExportFieldSet::parse(std::string_view tokens)
{
    ExportFieldSet fields;
    for (const auto part : std::views::split(tokens, ',')) {
        const auto known =
            std::ranges::find(exportFieldTokens, std::string_view(part), &ExportFieldToken::token);
        if (known == exportFieldTokens.end())
            return std::nullopt;
        fields.*known->field = true;
    }
    return fields == ExportFieldSet() ? std::nullopt : std::optional(fields);
}

std::string ExportFieldSet::tokens() const
{
    std::string joined;
    for (const auto& [token, field] : exportFieldTokens) {
        if (!(this->*field))
            continue;
        if (!joined.empty())
            joined += ',';
        joined += token;
    }
    return joined;
}

ExportFieldSet ExportFieldSet::normalised(ExportMode mode) const
{
    auto fields = *this;
    fields.includesDuration = true;
    fields.includesDate = mode == ExportMode::detailed;
    return fields;
}

} // namespace stintbook
