#include "CommandLine/StoreTables.h"

#include <fmt/format.h>

#include "CommandLine/Formatting.h"
#include "CommandLine/Table.h"
#include "Store/StoreInformation.h"

namespace stintbook {

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
    Table table({{"Records"}, {"Count", Table::Alignment::right}});
    for (const auto& [name, records] : information.tables)
        table.add({name, std::to_string(records)});
    session.output() << '\n' << table;
}

} // namespace stintbook
