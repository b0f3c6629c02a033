#include "Rules/RuleExplanation.h"

#include <vector>

#include <fmt/format.h>

namespace stintbook {

namespace {

bool isArchived(AssignmentTargetProblem problem)
{
    return problem == AssignmentTargetProblem::clientArchived
        || problem == AssignmentTargetProblem::projectArchived;
}

} // namespace

std::string conditionsText(const RuleMatch& match)
{
    return conditionsText(match, match.applicationBundleIdentifier.value_or(""));
}

std::string conditionsText(const RuleMatch& match, const std::string& applicationName)
{
    std::vector<std::string> parts;
    if (match.applicationBundleIdentifier)
        parts.push_back("application " + applicationName);
    if (match.browserDomain)
        parts.push_back("domain " + match.browserDomain->host());
    if (match.titleContains)
        parts.push_back("title “" + *match.titleContains + "”");
    return fmt::format("{}", fmt::join(parts, " and "));
}

std::string_view explanation(RuleDimension dimension)
{
    switch (dimension) {
    case RuleDimension::application:
        return "An application matches by its exact bundle identifier.";
    case RuleDimension::windowTitle:
        return "A window or document title matches when it contains this text, ignoring case and accents.";
    case RuleDimension::domain:
        break;
    }
    return "A domain matches this host and any subdomain of it.";
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

std::string_view unusableTargetBadge(AssignmentTargetProblem problem)
{
    return isArchived(problem) ? "Archived target — attributes nothing" : "Attributes nothing";
}

std::string unusableTargetExplanation(AssignmentTargetProblem problem)
{
    auto why = std::string(reason(problem));
    why.front() = 'I';
    return fmt::format("{}. The rule is kept and explained; it attributes nothing until the target is {}.",
                       why, isArchived(problem) ? "restored" : "replaced");
}

} // namespace stintbook
