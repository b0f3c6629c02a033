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
    auto verb = noun.verb("add", "Add a client");
    const auto& name = verb.argument("NAME", "Its name");
    const auto& color = verb.option("--color", "HEX", "Its colour, as #1A2B3C");
    const auto& rate = verb.option("--rate", "RATE", "Money an hour");
    const auto& rounding = verb.choice("--rounding", roundingChoices(), "How its time is rounded");
    verb.runs([&](Session& session) {
        const auto policy = rounding ? roundingArgument(*rounding) : std::nullopt;
        const auto id = orRefuse(ClientBook(session.store()).addClient({name, color, rate, policy}));
        session.printIdentifier(id.uuid);
    });
}

void addList(Noun& noun)
{
    auto verb = noun.verb("list", "All clients");
    verb.runs([](Session& session) {
        const auto clients = orRefuse(ClientBook(session.store()).clients());
        if (session.isJSON()) {
            session.printJSON([&](JsonWriter& json) {
                json.key("clients");
                json.array(clients, [&](const ListedClient& listed) { write(json, listed); });
            });
            return;
        }
        Table table(
            {{"Client"}, {"Colour"}, {"Rate", Table::Alignment::right}, {"Rounding"}, {""}, {"Identifier"}});
        for (const auto& [entry, references, billing] : clients) {
            table.add({entry.name, entry.color ? entry.color->hex() : "",
                       billing.hourlyRate ? billing.hourlyRate->text() : "",
                       billing.rounding ? std::string(label(*billing.rounding)) : "",
                       entry.isArchived ? "archived" : "", entry.id.text()});
        }
        session.output() << table;
    });
}

} // namespace

void addClientCommands(CommandTree& tree)
{
    auto noun = tree.noun("client", "Clients");
    addAdd(noun);
    addList(noun);
    auto verbs =
        editVerbs<ClientBook>(noun, "CLIENT", "The client", [](ClientBook& book, const std::string& text) {
            return clientArgument(text, orRefuse(book.directory()));
        });
    verbs.addWithValue(
        "rename", "Change a client's name", "NAME",
        [](ClientBook& book, ClientID id, const std::string& name) { return book.renameClient(id, name); });
    verbs.addWithValue("color", "Change a client's colour", "HEX|none",
                       [](ClientBook& book, ClientID id, const std::string& color) {
                           return book.colorClient(id, unlessNone(color));
                       });
    verbs.add("archive", "Keep a client's history, but give it no new work",
              [](ClientBook& book, ClientID id) { return book.archiveClient(id, true); });
    verbs.add("restore", "Take a client out of the archive",
              [](ClientBook& book, ClientID id) { return book.archiveClient(id, false); });
    verbs.add("delete", "Delete a client that nothing recorded names",
              [](ClientBook& book, ClientID id) { return book.deleteClient(id); });
    verbs.addWithValue("rate", "Set what an hour costs", "RATE|none",
                       [](ClientBook& book, ClientID id, const std::string& rate) {
                           return book.setClientRate(id, unlessNone(rate));
                       });
    verbs.addWithValue(
        "rounding", "Set how time is rounded", "POLICY|none",
        [](ClientBook& book, ClientID id, const std::string& policy) {
            return book.setClientRounding(id, roundingArgument(policy));
        },
        roundingChoices());
}

} // namespace stintbook
