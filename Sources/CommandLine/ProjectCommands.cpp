#include <fmt/format.h>

#include "App/ClientBook.h"
#include "CommandLine/Arguments.h"
#include "CommandLine/CommandTree.h"
#include "CommandLine/EditVerbs.h"
#include "CommandLine/ListJSON.h"
#include "CommandLine/Table.h"

namespace stintbook {

namespace {

void addAdd(Noun& noun)
{
    auto verb = noun.verb("add", "Add a project to a client");
    const auto& client = verb.argument("CLIENT", "The client");
    const auto& name = verb.argument("NAME", "Its name");
    const auto& billable =
        verb.choice("--billable", yesAndNo(), "Whether its work is billed; yes unless said otherwise");
    const auto& rate = verb.option("--rate", "RATE", "Money an hour, instead of the client's");
    const auto& rounding =
        verb.choice("--rounding", roundingChoices(), "How its time is rounded, instead of the client's");
    verb.runs([&](Session& session) {
        ClientBook book(session.store());
        const auto owner = clientArgument(client, orRefuse(book.directory()));
        const auto policy = rounding ? roundingArgument(*rounding) : std::nullopt;
        const auto id =
            orRefuse(book.addProject({owner, name, !billable || yesOrNo(*billable), rate, policy}));
        session.printIdentifier(id.uuid);
    });
}

void addList(Noun& noun)
{
    auto verb = noun.verb("list", "All projects, or those of a client");
    const auto& clientText = verb.option("--client", "CLIENT", "Only this client's");
    verb.runs([&](Session& session) {
        const ClientBook book(session.store());
        const auto directory = orRefuse(book.directory());
        const auto client = clientText ? std::optional(clientArgument(*clientText, directory)) : std::nullopt;
        const auto projects = orRefuse(book.projects(client));
        if (session.isJSON()) {
            session.printJSON([&](JsonWriter& json) {
                json.key("projects");
                json.array(projects, [&](const ListedProject& listed) { write(json, listed); });
            });
            return;
        }
        Table table({{"Client"},
                     {"Project"},
                     {"Billable"},
                     {"Rate", Table::Alignment::right},
                     {"Rounding"},
                     {""},
                     {"Identifier"}});
        for (const auto& [entry, references, billing] : projects) {
            const auto* owner = directory.client(entry.clientID);
            table.add({owner != nullptr ? owner->name : "", entry.name, entry.defaultBillable ? "yes" : "no",
                       billing.hourlyRate ? billing.hourlyRate->text() : "",
                       billing.rounding ? std::string(label(*billing.rounding)) : "",
                       entry.isArchived ? "archived" : "", entry.id.text()});
        }
        session.output() << table;
    });
}

} // namespace

void addProjectCommands(CommandTree& tree)
{
    auto noun = tree.noun("project", "Projects of clients");
    addAdd(noun);
    addList(noun);
    auto verbs =
        editVerbs<ClientBook>(noun, "PROJECT", "The project", [](ClientBook& book, const std::string& text) {
            return projectArgument(text, orRefuse(book.directory()));
        });
    verbs.addWithValue(
        "rename", "Change a project's name", "NAME",
        [](ClientBook& book, ProjectID id, const std::string& name) { return book.renameProject(id, name); });
    verbs.addWithValue(
        "billable", "Set whether its work is billed", "yes|no",
        [](ClientBook& book, ProjectID id, const std::string& answer) {
            return book.setProjectBillable(id, yesOrNo(answer));
        },
        yesAndNo());
    verbs.add("archive", "Keep a project's history, but give it no new work",
              [](ClientBook& book, ProjectID id) { return book.archiveProject(id, true); });
    verbs.add("restore", "Take a project out of the archive",
              [](ClientBook& book, ProjectID id) { return book.archiveProject(id, false); });
    verbs.add("delete", "Delete a project that nothing recorded names",
              [](ClientBook& book, ProjectID id) { return book.deleteProject(id); });
    verbs.addWithValue("rate", "Set what an hour costs", "RATE|none",
                       [](ClientBook& book, ProjectID id, const std::string& rate) {
                           return book.setProjectRate(id, unlessNone(rate));
                       });
    verbs.addWithValue(
        "rounding", "Set how time is rounded", "POLICY|none",
        [](ClientBook& book, ProjectID id, const std::string& policy) {
            return book.setProjectRounding(id, roundingArgument(policy));
        },
        roundingChoices());
}

} // namespace stintbook
