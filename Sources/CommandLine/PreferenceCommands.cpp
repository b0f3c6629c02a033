#include "App/KnownPreferences.h"
#include "CommandLine/CommandTree.h"
#include "CommandLine/Formatting.h"
#include "CommandLine/Table.h"
#include "Platform/SessionBusInstance.h"

namespace stintbook {

namespace {

/// As `set` takes it, but for an instant, which people read.
std::string shownValue(const Session& session, const ListedPreference& preference)
{
    if (!preference.value)
        return std::string(preference.absence);
    if (const auto* flag = std::get_if<bool>(&*preference.value))
        return *flag ? "true" : "false";
    if (const auto* number = std::get_if<std::int64_t>(&*preference.value))
        return std::to_string(*number);
    if (const auto* at = std::get_if<Instant>(&*preference.value))
        return shownDateTime(*at, session.calendar(), session.locale("LC_TIME"));
    return std::get<std::string>(*preference.value);
}

void writeValue(JsonWriter& json, const PreferenceValue& value)
{
    std::visit([&](const auto& stored) { json.member("value", stored); }, value);
}

void addList(Noun& noun)
{
    auto verb = noun.verb("list", "What was chosen, and what holds by default");
    verb.runs([](Session& session) {
        auto file = session.preferences();
        const auto preferences = listed(AppPreferences(file));
        if (session.isJSON()) {
            session.printJSON([&](JsonWriter& json) {
                json.key("preferences");
                json.array(preferences, [&](const ListedPreference& preference) {
                    json.object([&] {
                        json.member("key", preference.key);
                        if (preference.value)
                            writeValue(json, *preference.value);
                    });
                });
            });
            return;
        }
        Table table({{"Key"}, {"Value"}});
        for (const auto& preference : preferences)
            table.add({std::string(preference.key), shownValue(session, preference)});
        session.output() << table;
    });
}

void addSet(Noun& noun)
{
    auto verb = noun.verb("set", "Choose something else");
    const auto& key = verb.argument("KEY", "As listed");
    const auto& value = verb.argument("VALUE", "What it is to be");
    verb.runs([&](Session& session) {
        auto file = session.preferences();
        AppPreferences preferences(file);
        const auto chosen = choose(preferences, key, value);
        if (!chosen && std::holds_alternative<PreferenceValueRefused>(chosen.error()))
            throw WrongUsage{message(chosen.error())};
        orRefuse(chosen);
        if (isReadByARunningCopy(key))
            return;
        const auto running = SessionBusInstance().status();
        if (running && *running)
            session.errors() << "Velloran is running with what was chosen before; it takes this over when it "
                                "starts again.\n";
    });
}

} // namespace

void addPreferenceCommands(CommandTree& tree)
{
    auto noun = tree.noun("preferences", "What is recorded and kept, and how exports begin");
    addList(noun);
    addSet(noun);
}

} // namespace stintbook
