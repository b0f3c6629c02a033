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

} // namespace stintbook
