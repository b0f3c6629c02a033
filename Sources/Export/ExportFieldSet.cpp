#include "Export/ExportFieldSet.h"

#include <algorithm>
#include <iterator>
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

std::vector<ExportFieldToken> choosableFields(ExportFormat format)
{
    const auto isChosen = [format](std::string_view token) {
        switch (format) {
        case ExportFormat::detailedCSV:
        case ExportFormat::summarizedCSV:
            return token == "timeOfDay" || token == "description" || token == "billableState"
                || token == "rateAndAmount";
        case ExportFormat::timesheetPDF:
            return token == "client" || token == "project" || token == "description"
                || token == "rateAndAmount";
        case ExportFormat::copySummary:
            break;
        }
        return false;
    };
    std::vector<ExportFieldToken> chosen;
    std::ranges::copy_if(exportFieldTokens, std::back_inserter(chosen), isChosen, &ExportFieldToken::token);
    return chosen;
}

} // namespace stintbook
