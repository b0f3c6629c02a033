#include "Store/RuleRecords.h"

#include <array>

#include "Base/Try.h"
#include "Store/StoredFields.h"

namespace stintbook {

namespace {

enum class RuleKind { attribution, exclusion };

} // namespace

template <> struct RawValues<RuleKind> {
    static constexpr std::array table{
        std::pair{RuleKind::attribution, std::string_view("attribution")},
        std::pair{RuleKind::exclusion, std::string_view("exclusion")},
    };
};

namespace {

/// Reads the three conditions, which every query selects side by side.
Stored<RuleMatch> readMatch(Query& row, RuleID id, std::string_view field)
{
    RuleMatch match;
    match.applicationBundleIdentifier = row.take<std::optional<std::string>>();
    match.titleContains = row.take<std::optional<std::string>>();
    match.browserDomain =
        TRY(storedDomain(id.uuid, "rule.browserDomain", row.take<std::optional<std::string>>()));
    if (match.isEmpty())
        return unreadable(id, field);
    return match;
}

Stored<AttributionRule> readAttributionRule(StoreConnection& /*connection*/, Query& row)
{
    AttributionRule rule;
    rule.id = row.take<RuleID>();
    rule.isEnabled = row.take<bool>();
    rule.priority = row.take<int>();
    rule.match = TRY(readMatch(row, rule.id, "attributionRule.match"));
    rule.clientID = row.take<ClientID>();
    rule.projectID = row.take<ProjectID>();
    rule.billableOverride = row.take<std::optional<bool>>();
    return rule;
}

Stored<ExclusionRule> readExclusionRule(StoreConnection& /*connection*/, Query& row)
{
    ExclusionRule rule;
    rule.id = row.take<RuleID>();
    rule.isEnabled = row.take<bool>();
    rule.priority = row.take<int>();
    rule.match = TRY(readMatch(row, rule.id, "exclusionRule.match"));
    return rule;
}

void writeDomain(StoreConnection& connection, RuleID id, RuleKind kind, const RuleMatch& match)
{
    if (match.browserDomain)
        connection.query("INSERT INTO RuleBrowserDomain (ruleID, ruleKindRaw, host) VALUES (?1, ?2, ?3)")
            .bind(id, kind, match.browserDomain->host())
            .run();
}

void removeDomains(StoreConnection& connection, RuleKind kind)
{
    connection.query("DELETE FROM RuleBrowserDomain WHERE ruleKindRaw = ?1").bind(kind).run();
}

} // namespace

StoredRecords<AttributionRule> allAttributionRules(StoreConnection& connection)
{
    return {connection,
            "SELECT r.id, r.isEnabled, r.priority, r.applicationBundleIdentifier, r.titleContains, d.host,"
            " r.clientID, r.projectID, r.billableOverride FROM AttributionRule r"
            " LEFT JOIN RuleBrowserDomain d ON d.ruleID = r.id AND d.ruleKindRaw = ?1"
            " ORDER BY r.priority, r.id",
            readAttributionRule, RuleKind::attribution};
}

StoredRecords<ExclusionRule> allExclusionRules(StoreConnection& connection)
{
    return {connection,
            "SELECT r.id, r.isEnabled, r.priority, r.applicationBundleIdentifier, r.titleContains, d.host"
            " FROM ExclusionRule r LEFT JOIN RuleBrowserDomain d ON d.ruleID = r.id AND d.ruleKindRaw = ?1"
            " ORDER BY r.priority, r.id",
            readExclusionRule, RuleKind::exclusion};
}

void replaceAttributionRules(StoreConnection& connection, const std::vector<AttributionRule>& rules)
{
    connection.query("DELETE FROM AttributionRule").run();
    removeDomains(connection, RuleKind::attribution);
    auto insertion = connection.query(
        "INSERT INTO AttributionRule (id, isEnabled, priority, applicationBundleIdentifier, titleContains,"
        " clientID, projectID, billableOverride) VALUES (?1, ?2, ?3, ?4, ?5, ?6, ?7, ?8)");
    for (const auto& rule : rules) {
        insertion
            .bind(rule.id, rule.isEnabled, rule.priority, rule.match.applicationBundleIdentifier,
                  rule.match.titleContains, rule.clientID, rule.projectID, rule.billableOverride)
            .run();
        writeDomain(connection, rule.id, RuleKind::attribution, rule.match);
    }
}

void replaceExclusionRules(StoreConnection& connection, const std::vector<ExclusionRule>& rules)
{
    connection.query("DELETE FROM ExclusionRule").run();
    removeDomains(connection, RuleKind::exclusion);
    auto insertion = connection.query(
        "INSERT INTO ExclusionRule (id, isEnabled, priority, applicationBundleIdentifier, titleContains)"
        " VALUES (?1, ?2, ?3, ?4, ?5)");
    for (const auto& rule : rules) {
        insertion
            .bind(rule.id, rule.isEnabled, rule.priority, rule.match.applicationBundleIdentifier,
                  rule.match.titleContains)
            .run();
        writeDomain(connection, rule.id, RuleKind::exclusion, rule.match);
    }
}

} // namespace stintbook
