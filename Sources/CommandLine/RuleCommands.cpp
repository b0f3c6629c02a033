#include "App/ClientBook.h"
#include "App/RuleBook.h"
#include "CommandLine/Arguments.h"
#include "CommandLine/CommandTree.h"
#include "CommandLine/EditVerbs.h"
#include "CommandLine/ListJSON.h"
#include "CommandLine/RulePreviewCommands.h"
#include "CommandLine/Table.h"
#include "Rules/RuleExplanation.h"

namespace stintbook {

namespace {

struct MatchOptions {
    const std::optional<std::string>& application;
    const std::optional<std::string>& domain;
    const std::optional<std::string>& title;

    TypedMatch typed() const { return {application, domain, title}; }
};

MatchOptions matchOptions(Verb& verb)
{
    const auto option = [&](const char* name, const char* value, RuleDimension dimension) -> auto& {
        return verb.option(name, value, std::string(explanation(dimension)));
    };
    return {option("--application", "ID", RuleDimension::application),
            option("--domain", "HOST", RuleDimension::domain),
            option("--title", "TEXT", RuleDimension::windowTitle)};
}

void addAdd(Noun& noun)
{
    auto verb = noun.verb("add", "Add a rule at the top of the list");
    const auto& clientText = verb.requiredOption("--client", "CLIENT", "Whom matching work is for");
    const auto& projectText = verb.requiredOption("--project", "PROJECT", "What matching work is for");
    const auto match = matchOptions(verb);
    const auto& billable = verb.choice("--billable", yesAndNo(), "Instead of the project's default");
    verb.runs([&, match](Session& session) {
        const auto directory = orRefuse(ClientBook(session.store()).directory());
        const auto client = clientArgument(clientText, directory);
        const auto project = projectArgument(projectText, directory, client);
        const auto isBillable = billable ? std::optional(yesOrNo(*billable)) : std::nullopt;
        const auto id = orRefuse(RuleBook(session.store()).add({match.typed(), client, project, isBillable}));
        session.printIdentifier(id.uuid);
    });
}

void addList(Noun& noun)
{
    auto verb = noun.verb("list", "All rules, in order");
    verb.runs([](Session& session) {
        const auto rules = orRefuse(RuleBook(session.store()).list());
        if (session.isJSON()) {
            session.printJSON([&](JsonWriter& json) { writeMembers(json, rules); });
            return;
        }
        const auto directory = orRefuse(ClientBook(session.store()).directory());
        Table table({{"", Table::Alignment::right}, {"When"}, {"Then"}, {""}, {"Identifier"}});
        int position = 0;
        for (const auto& rule : rules.attributionRules) {
            const bool isUsable = !directory.problem(rule.clientID, rule.projectID);
            table.add({std::to_string(++position), conditionsText(rule.match),
                       ruleTargetText(rule.clientID, rule.projectID, directory),
                       !rule.isEnabled                      ? "off"
                           : !isUsable                      ? "Attributes nothing"
                           : rules.losing.contains(rule.id) ? std::string(losesConflictBadge)
                                                            : "",
                       rule.id.text()});
        }
        for (const auto& rule : rules.exclusionRules)
            table.add({"", conditionsText(rule.match), "never recorded as work", rule.isEnabled ? "" : "off",
                       rule.id.text()});
        session.output() << table;
    });
}

auto ruleVerbs(Noun& noun)
{
    return editVerbs<RuleBook>(noun, "ID", "The rule", [](RuleBook&, const std::string& text) {
        return RuleID{identifierArgument(text)};
    });
}

void addMove(Noun& noun)
{
    auto verb = noun.verb("move", "Move a rule to a place in the list, counted from 1");
    const auto& id = verb.argument("ID", "The rule");
    const auto& to = verb.requiredOption("--to", "POSITION", "Where it is to stand");
    verb.runs([&](Session& session) {
        const int position = positionArgument(to);
        orRefuse(RuleBook(session.store()).move(RuleID{identifierArgument(id)}, position));
    });
}

} // namespace

void addRuleCommands(CommandTree& tree)
{
    auto noun = tree.noun("rule", "Rules that attribute work");
    addAdd(noun);
    addList(noun);
    auto copy = noun.verb("copy", "Copy a rule, directly below it");
    const auto& original = copy.argument("ID", "The rule");
    copy.runs([&](Session& session) {
        session.printIdentifier(
            orRefuse(RuleBook(session.store()).copy(RuleID{identifierArgument(original)})).uuid);
    });
    addMove(noun);
    auto verbs = ruleVerbs(noun);
    verbs.add("enable", "Turn a rule on",
              [](RuleBook& book, RuleID id) { return book.setEnabled(id, true); });
    verbs.add("disable", "Turn a rule off",
              [](RuleBook& book, RuleID id) { return book.setEnabled(id, false); });
    verbs.add("delete", "Delete a rule", [](RuleBook& book, RuleID id) { return book.remove(id); });
    addRulePreviewVerbs(noun);

    auto exclude = tree.noun("exclude", "Rules that keep work out of review");
    auto add = exclude.verb("add", "Add an exclusion");
    const auto match = matchOptions(add);
    add.runs([match](Session& session) {
        session.printIdentifier(orRefuse(RuleBook(session.store()).addExclusion(match.typed())).uuid);
    });
    auto list = exclude.verb("list", "All exclusions");
    list.runs([](Session& session) {
        auto rules = orRefuse(RuleBook(session.store()).list());
        if (session.isJSON()) {
            session.printJSON([&](JsonWriter& json) { writeExclusions(json, rules.exclusionRules); });
            return;
        }
        Table table({{"When"}, {""}, {"Identifier"}});
        for (const auto& rule : rules.exclusionRules)
            table.add({conditionsText(rule.match), rule.isEnabled ? "" : "off", rule.id.text()});
        session.output() << table;
    });
    ruleVerbs(exclude).add("delete", "Delete an exclusion",
                           [](RuleBook& book, RuleID id) { return book.removeExclusion(id); });
}

} // namespace stintbook
