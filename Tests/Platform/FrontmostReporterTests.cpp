#include <vector>

#include <gtest/gtest.h>

#include "Base/VirtualTime.h"
#include "Platform/FrontmostReporter.h"

namespace stintbook {

namespace {

/// A terminal is in front, and was reported.
class FrontmostReporterTest : public testing::Test {
protected:
    FrontmostReporterTest()
    {
        reporter.follow([this](const FrontmostWindow& front) { reports.push_back(front); });
    }

    static SeenWindow window(std::uint64_t number, const std::string& windowClass, const std::string& title)
    {
        return {number, {"", windowClass, 7}, title};
    }
    void switchTo(std::optional<SeenWindow> next)
    {
        front = std::move(next);
        reporter.noteSwitch();
    }

    VirtualTime time{{1000}};
    ApplicationIdentities identities{{}};
    std::optional<SeenWindow> front = window(1, "Term", "shell");
    FrontmostReporter reporter{time, time, identities, [this] { return front; }};
    std::vector<FrontmostWindow> reports;
};

} // namespace

TEST_F(FrontmostReporterTest, ReportsThePresentStateAtOnceAndEachSettledSwitchWithTheInstantItBegan)
{
    ASSERT_EQ(reports.size(), 1u);
    EXPECT_EQ(reports[0].application.identity.bundleIdentifier, "x11:term");
    EXPECT_EQ(reports[0].title, "shell");
    EXPECT_EQ(reports[0].application.observedAt, Instant{1000});

    time.advance({10});
    switchTo(std::nullopt);
    time.advance({0.01});
    switchTo(window(2, "Panel", ""));
    time.advance({0.01});
    switchTo(window(3, "Editor", "draft"));
    EXPECT_EQ(reports.size(), 1u);
    time.advance({0.1});
    ASSERT_EQ(reports.size(), 2u);
    EXPECT_EQ(reports[1].application.identity.bundleIdentifier, "x11:editor");
    EXPECT_EQ(reports[1].application.observedAt, Instant{1010});
}

TEST_F(FrontmostReporterTest, KeepsSilentAboutWhatDidNotStayOrIsNeverRecordedAndOnceItIsStopped)
{
    switchTo(window(2, "Editor", "draft"));
    switchTo(window(1, "Term", "shell"));
    time.advance({1});
    switchTo(std::nullopt);
    time.advance({1});
    switchTo(window(2, "velloran", "Today"));
    time.advance({1});
    EXPECT_EQ(reporter.current(), std::nullopt);
    // Back again: nothing has changed.
    switchTo(window(1, "Term", "shell"));
    time.advance({1});
    reporter.stop();
    switchTo(window(3, "Editor", "draft"));
    time.advance({1});
    EXPECT_EQ(reports.size(), 1u);
}

TEST_F(FrontmostReporterTest, TellsATitleChangeFromASwitchThatFollowsIt)
{
    time.advance({10});
    front->title = "editor";
    reporter.noteTitle();
    time.advance({1});
    ASSERT_EQ(reports.size(), 2u);
    EXPECT_EQ(reports[1].title, "editor");
    EXPECT_EQ(reports[1].application.observedAt, Instant{1010});

    time.advance({9});
    reporter.noteTitle();
    time.advance({0.05});
    switchTo(window(2, "Editor", "draft"));
    time.advance({1});
    ASSERT_EQ(reports.size(), 3u);
    EXPECT_EQ(reports[2].application.observedAt, Instant{1020.05});
}

TEST_F(FrontmostReporterTest, ReportsAnAnimatedTitleInTime)
{
    for (int i = 1; i <= 20; ++i) {
        front->title = std::to_string(i);
        reporter.noteTitle();
        time.advance({0.05});
    }
    EXPECT_GE(reports.size(), 8u);
    EXPECT_LE(reports.size(), 14u);
}

} // namespace stintbook
