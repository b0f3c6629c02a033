#pragma once

#include "App/ClientBook.h"
#include "App/RuleBook.h"
#include "Base/Json.h"

/// The entries of `client list`, `project list` and `rule list`: records of a data export with what the list
/// adds to them.
namespace stintbook {

void write(JsonWriter& json, const ListedClient& listed);
void write(JsonWriter& json, const ListedProject& listed);
void writeMembers(JsonWriter& json, const ListedRules& rules);
/// {"exclusionRules":[…]}, the member alone.
void writeExclusions(JsonWriter& json, const std::vector<ExclusionRule>& rules);

} // namespace stintbook
