#include "Rules/RuleExplanation.h"

#include <vector>

#include <fmt/format.h>

namespace stintbook {

std::string conditionsText(const RuleMatch& match)
{
    std::vector<std::string> parts;
    if (match.applicationBundleIdentifier)
        parts.push_back("application " + *match.applicationBundleIdentifier);
    if (match.browserDomain)
        parts.push_back("domain " + match.browserDomain->host());
    if (match.titleContains)
        parts.push_back("title “" + *match.titleContains + "”");
    return fmt::format("{}", fmt::join(parts, " and "));
}

std::string ruleTargetText(ClientID client, ProjectID project, const AssignmentDirectory& directory)
{
    const auto* itsClient = directory.client(client);
    const auto* itsProject = directory.project(project);
    return itsClient != nullptr && itsProject != nullptr ? itsClient->name + " / " + itsProject->name
                                                         : "an unavailable client/project";
}

std::string shadowedText(int count)
{
    return fmt::format("{} more match but a rule above wins.", count);
}

std::string alsoMatchedText(std::span<const RuleMatch> others)
{
    if (others.empty())
        return {};
    std::vector<std::string> texts;
    for (const auto& match : others)
        texts.push_back(conditionsText(match));
    return fmt::format("Also matched by: {}", fmt::join(texts, ", "));
}

std::string_view conflictExplanation(const RuleConflict& conflict, RuleID viewed)
{
    return viewed == conflict.winner
        ? "This rule wins — it is higher in the list, so that rule never applies to the work they both match."
        : "That rule wins — it is higher in the list, so this rule never applies to the work they both "
          "match.";
}

} // namespace stintbook
