#include <gmock/gmock.h>

#include "RecordingTest.h"
#include "Support/TemporaryDirectory.h"

namespace stintbook {

/// A recorder whose store other processes want to lose something.
class RecordedHistory : public RecordingTest {
protected:
    RecordedHistory() { startTerminal("secret"); }

    bool isInStore(const std::string& text) const
    {
        for (const auto& [name, contents] : filesIn(store)) {
            if (contents.contains(text))
                return true;
        }
        return false;
    }
    void changeTitle(const std::string& title)
    {
        const auto from = now();
        setTitle(title);
        ASSERT_TRUE(opensSegment("work", from)) << title;
    }
};

TEST_F(RecordedHistory, IsDeletedByTheRecorderWhichGoesOnObserving)
{
    const auto recorder = record();
    changeTitle("open when it was deleted");
    ASSERT_TRUE(PrivateDesktop::eventually([&] { return isInStore("secret"); }));
    const auto asked = now();
    EXPECT_EQ(cli({"--store", store, "data", "delete", "--all", "--yes"}),
              "All activity data was deleted.\n");
    EXPECT_FALSE(isInStore("secret"));
    EXPECT_EQ(status()["unsaved"].GetInt(), 0);

    changeTitle("after it");
    EXPECT_THAT(cli({"--store", store, "data", "retention", "1"}),
                testing::StartsWith("Observed activity is kept for 1 day.\n"));
    EXPECT_EQ(cli({"--store", store, "data", "cleanup"}), "Removed 0 days of observed activity.\n");
    EXPECT_EQ(terminate(recorder).exitStatus, 0) << log(recorder);
    const auto stored = stretches(store);
    EXPECT_GE(stored.front().start, asked);
    expectTouching(stored);
    EXPECT_THAT(whats(stored), testing::Contains("work debian-xterm “after it”"));
    EXPECT_FALSE(isInStore("secret"));
}

} // namespace stintbook
