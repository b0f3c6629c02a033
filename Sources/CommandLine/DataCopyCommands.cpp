#include <filesystem>
#include <fstream>
#include <system_error>

#include <fmt/format.h>

#include "App/ActivityDataExport.h"
#include "CommandLine/CommandTree.h"
#include "CommandLine/Interruption.h"
#include "CommandLine/Progress.h"
#include "Platform/SessionBusInstance.h"
#include "Store/ActivityDataImport.h"

namespace stintbook {

namespace {

void addExport(Noun& noun)
{
    auto verb = noun.verb("export", "A copy of everything, as one JSON document");
    const auto& file = verb.argument("FILE", "Where to; - is standard output");
    verb.runs([&](Session& session) {
        auto& store = session.store();
        SessionBusInstance instance;
        if (const auto saved = saveWhatIsRecorded(instance, store.file()); !saved)
            session.errors() << saved.error() << " What it has not saved yet is missing in the copy.\n";
        // Not before: an interruption while the running copy is waited for ends the command at once.
        const Interruption interruption;
        Progress progress(session.errors());
        ActivityDataExportRequest request{
            .exportedAt = session.now(),
            .sink = [&](std::string_view bytes) -> std::expected<void, std::string> {
                progress.clear();
                session.output() << bytes;
                if (!session.output())
                    return std::unexpected("Standard output did not take it.");
                return {};
            },
            .cancellation = interruption.token(),
            .progress =
                [&](std::int64_t count) { progress.show(fmt::format("{} recorded segments…", count)); },
        };
        orRefuse(file == "-" ? exportActivityData(store.database(), std::move(request))
                             : exportActivityData(store.database(), std::move(request), file));
    });
}

void printCounts(Session& session, const ActivityDataCounts& counts)
{
    if (session.isJSON()) {
        session.printJSON([&](JsonWriter& json) {
            for (const auto& [list, count] : counts)
                json.member(list, count);
        });
        return;
    }
    session.output() << fmt::format(
        "Imported: {} recorded segments, {} reviewed items, {} clients, {} projects, {} rules, {} exports.\n",
        counts.at("segments"), counts.at("reviewedItems"), counts.at("clients"), counts.at("projects"),
        counts.at("attributionRules") + counts.at("exclusionRules"), counts.at("exportSnapshots"));
}

void addImport(Noun& noun)
{
    auto verb = noun.verb("import", "Fill an empty store from such a copy");
    const auto& file = verb.argument("FILE", "What data export wrote");
    verb.runs([&](Session& session) {
        const Interruption interruption;
        std::ifstream document(file, std::ios::binary);
        if (!document)
            throw Refusal{fmt::format("The file “{}” could not be read, so nothing was imported.", file)};
        std::error_code unknown;
        const auto size = std::filesystem::file_size(file, unknown);
        const auto store = orRefuse(session.ownStore());
        const auto imported = [&] {
            // Gone before the answer stands there.
            Progress progress(session.errors());
            return importActivityData(
                store->database(), document,
                {.cancellation = interruption.token(), .progress = [&](std::uint64_t read) {
                     if (!unknown && size > 0)
                         progress.show(fmt::format("{} %", 100 * read / size));
                 }});
        }();
        printCounts(session, orRefuse(imported));
    });
}

} // namespace

void addDataCopyCommands(Noun& noun)
{
    addExport(noun);
    addImport(noun);
}

} // namespace stintbook
