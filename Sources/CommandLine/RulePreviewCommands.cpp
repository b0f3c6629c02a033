#include "CommandLine/RulePreviewCommands.h"

#include <algorithm>

#include <fmt/format.h>

#include "App/ClientBook.h"
#include "App/RuleBook.h"
#include "App/RulePreviewDesk.h"
#include "CommandLine/Arguments.h"
#include "CommandLine/ListJSON.h"
#include "CommandLine/Table.h"
#include "Rules/RuleExplanation.h"

namespace stintbook {

namespace {

constexpr auto right = Table::Alignment::right;

void printPreview(Session& session, const RulePrecedencePreview& preview, int windowDays)
{
    const auto directory = orRefuse(ClientBook(session.store()).directory());
    Table table({{"When"}, {"Then"}, {"Applies", right}, {""}, {"Identifier"}});
    for (const auto& rule : preview.rules) {
        const auto summary = previewSummary(preview, rule.id, windowDays);
        table.add({conditionsText(rule.match), ruleTargetText(rule.clientID, rule.projectID, directory),
                   std::to_string(summary.counts.applies), remark(summary), rule.id.text()});
    }
    session.output() << fmt::format("Blocks of the last {}\n\n",
                                    windowDays == 1 ? "day" : fmt::format("{} days", windowDays))
                     << table;
}

void addPreview(Noun& noun)
{
    auto verb = noun.verb("preview", "How many blocks each rule attributes, and how many it loses");
    const auto& days = verb.option("--days", "N", "How many days up to today; 30 unless said otherwise");
    verb.runs([&](Session& session) {
        const int windowDays = days ? dayCountArgument(*days) : usualPreviewDays;
        const RulePreviewDesk desk(session.store(), session.calendar());
        const auto preview = orRefuse(desk.preview(windowDays, session.now()));
        if (session.isJSON())
            session.printJSON([&](JsonWriter& json) { writeMembers(json, preview, windowDays); });
        else
            printPreview(session, preview, windowDays);
    });
}

void printConflicts(Session& session, const std::vector<RuleConflict>& conflicts)
{
    const auto rules = orRefuse(RuleBook(session.store()).list()).attributionRules;
    const auto conditions = [&](RuleID id) {
        const auto rule = std::ranges::find(rules, id, &AttributionRule::id);
        return rule == rules.end() ? std::string() : conditionsText(rule->match);
    };
    Table table({{"This rule"}, {"Identifier"}, {"That rule"}, {"Identifier"}});
    for (const auto& [winner, loser] : conflicts)
        table.add({conditions(winner), winner.text(), conditions(loser), loser.text()});
    session.output() << table;
    if (!conflicts.empty())
        session.output() << '\n' << conflictExplanation(conflicts.front(), conflicts.front().winner) << '\n';
}

void addConflicts(Noun& noun)
{
    auto verb = noun.verb("conflicts", "Pairs of rules that match the same work and disagree about it");
    verb.runs([](Session& session) {
        const auto conflicts = orRefuse(RuleBook(session.store()).conflicts());
        if (session.isJSON())
            session.printJSON([&](JsonWriter& json) { writeMembers(json, conflicts); });
        else
            printConflicts(session, conflicts);
    });
}

void printSuggestion(Session& session, const RuleSuggestion& suggestion)
{
    const auto directory = orRefuse(ClientBook(session.store()).directory());
    Table table({{"When"}, {"Then"}, {"Blocks", right}});
    const auto* billable = !suggestion.billableOverride ? ""
        : *suggestion.billableOverride                  ? " (billable)"
                                                        : " (not billable)";
    table.add({conditionsText(suggestion.match),
               ruleTargetText(suggestion.clientID, suggestion.projectID, directory) + billable,
               std::to_string(suggestion.blockCount)});
    session.output() << table;
}

void addSuggest(Noun& noun)
{
    auto verb = noun.verb("suggest", "The rule that would have attributed work so");
    const auto& dayText = verb.argument("DAY", "The day");
    const auto& id = verb.argument("ID", "A block or item of that day");
    const auto& words = verb.option("--title", "WORDS", "Only work with these words in its title");
    const auto& client = verb.option("--client", "CLIENT", "Instead of whom the work is for");
    const auto& project = verb.option("--project", "PROJECT", "Instead of what the work is for");
    verb.runs([&](Session& session) {
        if (client.has_value() != project.has_value())
            throw WrongUsage{"--client and --project go together."};
        const auto when = dayArgument(dayText, session.calendar(), session.now());
        RulePreviewDesk::CorrectedWork work{
            .day = when.day, .id = identifierArgument(id), .target = {}, .titleWords = words};
        if (client) {
            const auto directory = orRefuse(ClientBook(session.store()).directory());
            const auto whom = clientArgument(*client, directory);
            work.target = WorkTarget{whom, projectArgument(*project, directory, whom), {}};
        }
        const auto suggestion = orRefuse(RulePreviewDesk(session.store(), when.calendar).suggest(work));
        if (session.isJSON())
            session.printJSON([&](JsonWriter& json) { writeMembers(json, suggestion); });
        else
            printSuggestion(session, suggestion);
    });
}

} // namespace

void addRulePreviewVerbs(Noun& noun)
{
    addPreview(noun);
    addConflicts(noun);
    addSuggest(noun);
}

} // namespace stintbook
