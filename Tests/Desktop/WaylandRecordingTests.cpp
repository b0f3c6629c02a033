#include <string>

#include <gmock/gmock.h>

#include "RecordingTest.h"
#include "Support/TemporaryDirectory.h"

namespace stintbook {

namespace {

class WaylandRecording : public RecordingTest {
protected:
    WaylandRecording()
        : RecordingTest(Display::wayland)
    {
    }

    /// A terminal that comes to the front, and is renamed once the file "rename" is there.
    void startWindow(const std::string& title)
    {
        desktop.start({"foot", "--app-id", "foot", "--title", title, "sh", "-c",
                       "until [ -e '" + (desktop.home() / "rename").string()
                           + R"(' ]; do sleep 0.05; done; printf '\033]2;Renamed\007'; cat)"});
    }
};

} // namespace

TEST_F(WaylandRecording, StoresWhatTheCompositorHadInFrontAndReplaysIt)
{
    startWindow("Letter");
    const auto trace = desktop.home() / "trace.jsonl";
    const auto recorder = record({"--trace", trace});
    EXPECT_THAT(cli({"--store", store, "status"}), testing::HasSubstr("wlroots"));

    auto from = now();
    startWindow("Invoice");
    ASSERT_TRUE(opensSegment("work", from));
    from = now();
    desktop.run({"swaymsg", "[title=Letter]", "focus"});
    ASSERT_TRUE(opensSegment("work", from));
    from = now();
    desktop.run({"swaymsg", "[title=Letter]", "kill"});
    ASSERT_TRUE(opensSegment("work", from));
    from = now();
    writeFile(desktop.home() / "rename", "");
    ASSERT_TRUE(opensSegment("work", from));
    from = now();
    desktop.setSessionFlag("LockedHint", true);
    ASSERT_TRUE(opensSegment("gap", from));
    from = now();
    desktop.setSessionFlag("LockedHint", false);
    ASSERT_TRUE(opensSegment("work", from));
    EXPECT_EQ(terminate(recorder).exitStatus, 0) << log(recorder);

    const auto stored = stretches(store);
    EXPECT_THAT(whats(stored),
                testing::ElementsAre("work foot “Letter”", "work foot “Invoice”", "work foot “Letter”",
                                     "work foot “Invoice”", "work foot “Renamed”", "gap sessionInactive",
                                     "work foot “Renamed”"));
    expectTouching(stored);
    const auto replayed = desktop.home() / "replayed";
    cli({"--store", replayed, "replay", trace});
    EXPECT_EQ(whats(stretches(replayed)), whats(stored));
}

} // namespace stintbook
