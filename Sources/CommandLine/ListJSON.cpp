#include "CommandLine/ListJSON.h"

#include "Store/ActivityDataRecords.h"
#include "Store/RecordWriting.h"

namespace stintbook {

void write(JsonWriter& json, const ListedClient& listed)
{
    write(json, listed.client,
          DirectoryListing{listed.references, listed.billing.hourlyRate, listed.billing.rounding});
}

void write(JsonWriter& json, const ListedProject& listed)
{
    write(json, listed.project,
          DirectoryListing{listed.references, listed.billing.hourlyRate, listed.billing.rounding});
}

void writeMembers(JsonWriter& json, const ListedRules& rules)
{
    json.key("attributionRules");
    json.array(rules.attributionRules,
               [&](const AttributionRule& rule) { write(json, rule, rules.losing.contains(rule.id)); });
    writeExclusions(json, rules.exclusionRules);
}

void writeExclusions(JsonWriter& json, const std::vector<ExclusionRule>& rules)
{
    recordArray(json, "exclusionRules", rules);
}

void writeMembers(JsonWriter& json, const RulePrecedencePreview& preview, int windowDays)
{
    json.key("rules");
    json.array(preview.rules, [&](const AttributionRule& rule) {
        const auto& counts = preview.countsByRule.at(rule.id);
        json.object([&] {
            json.member("applies", counts.applies);
            json.member("id", rule.id);
            json.member("shadowed", counts.shadowed);
        });
    });
    json.member("windowDays", windowDays);
}

void writeMembers(JsonWriter& json, const std::vector<RuleConflict>& conflicts)
{
    json.key("conflicts");
    json.array(conflicts, [&](const RuleConflict& conflict) {
        json.object([&] {
            json.member("loser", conflict.loser);
            json.member("winner", conflict.winner);
        });
    });
}

void writeMembers(JsonWriter& json, const RuleSuggestion& suggestion)
{
    json.key("suggestion");
    json.object([&] {
        json.member("billableOverride", suggestion.billableOverride);
        json.member("blockCount", suggestion.blockCount);
        json.member("clientID", suggestion.clientID);
        recordMember(json, "match", suggestion.match);
        json.member("projectID", suggestion.projectID);
    });
}

} // namespace stintbook
