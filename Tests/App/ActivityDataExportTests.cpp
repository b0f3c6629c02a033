#include <gtest/gtest.h>

#include "App/ActivityDataExport.h"
#include "StoreOfADay.h"

namespace stintbook {
namespace {

TEST(ActivityDataExport, SuggestsANameWithTheDayInTheCalendarsZone)
{
    const Instant evening{1795215600}; // 23:00 in London, midnight in Berlin
    EXPECT_EQ(suggestedActivityDataFileName(evening, *CalendarContext::inZone("Europe/London")),
              "Velloran data 2026-11-20.json");
    EXPECT_EQ(suggestedActivityDataFileName(evening, *CalendarContext::inZone("Europe/Berlin")),
              "Velloran data 2026-11-21.json");
}

TEST(ActivityDataExport, LeavesTheFormerFileWhenItFailsOrIsCancelled)
{
    const StoreOfADay day;
    const auto file = day.directory / "copies" / "data.json";
    std::filesystem::create_directory(file.parent_path());
    writeFile(file, "former");
    std::stop_source cancelled;
    cancelled.request_stop();
    const auto expectProblem = [&](std::stop_token cancellation, const std::filesystem::path& where,
                                   const std::string& sentence) {
        const auto exported = exportActivityData(
            day.store->database(),
            {.exportedAt = day.at(12), .sink = {}, .cancellation = std::move(cancellation)}, where);
        ASSERT_FALSE(exported);
        EXPECT_EQ(message(exported.error()), sentence);
        EXPECT_EQ(filesIn(file.parent_path()), (std::map<std::string, std::string>{{"data.json", "former"}}));
    };
    expectProblem(cancelled.get_token(), file, "The export was cancelled, so nothing was exported.");
    expectProblem({}, file.parent_path(), "The file could not be written. Is a directory");
    expectProblem({}, file / "data.json", "The file could not be written. Not a directory");
    expectProblem({}, "/dev/full", "The file could not be written. No space left on device");
    day.store->database().write([](StoreConnection& connection) -> Stored<void> {
        connection.execute("UPDATE ActivitySegment SET originRaw = 'guessed'");
        return {};
    });
    expectProblem({}, file, "Recorded activity could not be read, so nothing was exported.");
}

} // namespace
} // namespace stintbook
