#pragma once

#include "App/ClientBook.h"
#include "App/RuleBook.h"
#include "Base/Json.h"
#include "Review/RulePrecedencePreview.h"
#include "Review/RuleSuggestion.h"

/// The entries of `client list`, `project list` and `rule list`: records of a data export with what the list
/// adds to them; and what else is printed about rules.
namespace stintbook {

void write(JsonWriter& json, const ListedClient& listed);
void write(JsonWriter& json, const ListedProject& listed);
void writeMembers(JsonWriter& json, const ListedRules& rules);
/// {"exclusionRules":[…]}, the member alone.
void writeExclusions(JsonWriter& json, const std::vector<ExclusionRule>& rules);

/// The members of `rule preview`, `rule conflicts` and `rule suggest`.
void writeMembers(JsonWriter& json, const RulePrecedencePreview& preview, int windowDays);
void writeMembers(JsonWriter& json, const std::vector<RuleConflict>& conflicts);
void writeMembers(JsonWriter& json, const RuleSuggestion& suggestion);

} // namespace stintbook
