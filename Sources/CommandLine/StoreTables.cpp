#include "CommandLine/StoreTables.h"

#include <fmt/format.h>

#include "App/AppPreferences.h"
#include "CommandLine/Formatting.h"
#include "CommandLine/Table.h"
#include "Store/StoreCheck.h"
#include "Store/StoreInformation.h"

namespace stintbook {

namespace {

std::optional<Instant> lastCleanup(const Session& session)
{
    auto file = session.preferences();
    return AppPreferences(file).lastAutomaticCleanup();
}

void write(JsonWriter& json, const StoreFinding& finding)
{
    const auto unlessEmpty = [](const std::string& text) {
        return text.empty() ? std::nullopt : std::optional(text);
    };
    json.object([&] {
        json.member("kind", rawValue(finding.kind));
        if (const auto& record = finding.record) {
            json.key("record");
            json.object([&] {
                json.member("field", unlessEmpty(record->field));
                json.member("identifier", unlessEmpty(record->identifier));
                json.member("table", record->table);
            });
        }
        json.member("sentence", message(finding));
    });
}

/// As one document, which may be long: it is printed while it grows.
std::size_t printFindingsAsJSON(StoreDatabase& database, std::ostream& output)
{
    constexpr std::size_t chunk = 1 << 16;
    std::string text;
    std::size_t count = 0;
    {
        JsonWriter json(text);
        json.object([&] {
            json.key("problems");
            json.beginArray();
            orRefuse(checkStore(database, [&](const StoreFinding& finding) {
                ++count;
                write(json, finding);
                if (text.size() >= chunk) {
                    output << text;
                    text.clear();
                }
            }));
            json.endArray();
            json.member("isSound", count == 0);
        });
    }
    output << text << '\n';
    return count;
}

std::size_t printFindings(StoreDatabase& database, std::ostream& output)
{
    std::size_t count = 0;
    orRefuse(checkStore(database, [&](const StoreFinding& finding) {
        ++count;
        output << message(finding) << '\n';
    }));
    if (count == 0)
        output << "The store is sound.\n";
    return count;
}

} // namespace

void printStoreCheck(Session& session)
{
    const auto store = orRefuse(OpenedStore::open(session.environment(), StoreRole::reader));
    const auto print = session.isJSON() ? printFindingsAsJSON : printFindings;
    const auto count = print(store->database(), session.output());
    if (count > 0)
        throw Refusal{fmt::format("The store has {} problem{}.", count, count == 1 ? "" : "s")};
}

void printStoreInformation(Session& session)
{
    const auto information = orRefuse(storeInformation(session.store().database()));
    const auto count = [](std::uintmax_t bytes) { return static_cast<std::int64_t>(bytes); };
    if (session.isJSON()) {
        session.printJSON([&](JsonWriter& json) {
            json.key("counts");
            json.object([&] {
                for (const auto& table : information.tables)
                    json.member(table.name, table.recordCount);
            });
            json.member("fileSize", count(information.fileSize));
            json.member("lastCleanup", lastCleanup(session));
            json.member("logSize", count(information.logSize));
            json.member("path", information.file.string());
            if (information.recorded) {
                json.member("recordedFrom", information.recorded->start);
                json.member("recordedTo", information.recorded->end);
            }
            json.member("schemaVersion", information.schemaVersion);
        });
        return;
    }
    session.output() << fmt::format("{}\nSchema version {}, {} bytes and {} in the log\n",
                                    information.file.string(), information.schemaVersion,
                                    information.fileSize, information.logSize);
    if (information.recorded) {
        const auto shown = [&](Instant at) {
            return shownDateTime(at, session.calendar(), session.locale("LC_TIME"));
        };
        session.output() << fmt::format("Recorded from {} to {}\n", shown(information.recorded->start),
                                        shown(information.recorded->end));
    }
    if (const auto cleaned = lastCleanup(session))
        session.output() << fmt::format(
            "Last cleaned up {}\n", shownDateTime(*cleaned, session.calendar(), session.locale("LC_TIME")));
    Table table({{"Records"}, {"Count", Table::Alignment::right}});
    for (const auto& [name, records] : information.tables)
        table.add({name, std::to_string(records)});
    session.output() << '\n' << table;
}

} // namespace stintbook
