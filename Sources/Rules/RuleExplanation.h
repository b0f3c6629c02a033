#pragma once

#include <span>
#include <string>
#include <string_view>

#include "Rules/RuleConflicts.h"
#include "Rules/RuleDraft.h"
#include "Rules/RuleMatch.h"

/// What people are told about rules and how they meet; every text has its one place here.
namespace stintbook {

/// "application org.example.Editor and title “plan”".
std::string conditionsText(const RuleMatch& match);
/// The same with the application's name for people.
std::string conditionsText(const RuleMatch& match, const std::string& applicationName);
/// How conditions of the dimension match.
std::string_view explanation(RuleDimension dimension);
/// How the conditions of one rule go together.
inline constexpr std::string_view conditionsExplanation = "A block matches when all conditions match.";
/// "Client / Project".
std::string ruleTargetText(ClientID client, ProjectID project, const AssignmentDirectory& directory);

/// Of a rule that matches blocks which rules above it win: "3 more match but a rule above wins."
std::string shadowedText(int count);
/// Heads the list of those blocks.
inline constexpr std::string_view shadowedBlocksHeading = "A rule above wins on";
inline constexpr std::string_view noBlockMatchesText = "No block on this day matches this rule.";
/// "Also matched by: …", with the conditions of the rules that match a block beside its winner; empty where
/// there are none.
std::string alsoMatchedText(std::span<const RuleMatch> others);

/// Which of the two wins, as told to whoever looks at the rule `viewed` of the pair.
std::string_view conflictExplanation(const RuleConflict& conflict, RuleID viewed);
/// The actions that select the other rule of a pair: from the winner, from the loser.
inline constexpr std::string_view showOverlappedRuleAction = "Show Overlapped Rule";
inline constexpr std::string_view showWinningRuleAction = "Show Winning Rule";
inline constexpr std::string_view losesConflictBadge = "Loses a conflict";

/// Of a rule whose target cannot receive new work: the badge, and why with what follows from it.
std::string_view unusableTargetBadge(AssignmentTargetProblem problem);
std::string unusableTargetExplanation(AssignmentTargetProblem problem);

} // namespace stintbook
