#include <vector>

#include <gtest/gtest.h>

#include "Base/VirtualTime.h"
#include "Platform/FrontmostReporter.h"

namespace stintbook {

namespace {

class FrontmostReporterTest : public testing::Test {
protected:
    FrontmostReporterTest()
        : m_reporter(m_time, m_time, m_identities, [this] { return m_front; })
    {
    }

    void follow()
    {
        m_reporter.follow([this](const FrontmostWindow& front) { m_reports.push_back(front); });
    }
    static SeenWindow window(std::uint64_t number, const std::string& windowClass, const std::string& title)
    {
        return {number, {"", windowClass, 7}, title};
    }
    void switchTo(std::optional<SeenWindow> front)
    {
        m_front = std::move(front);
        m_reporter.noteSwitch();
    }

    VirtualTime m_time{{1000}};
    ApplicationIdentities m_identities{{}};
    std::optional<SeenWindow> m_front;
    FrontmostReporter m_reporter;
    std::vector<FrontmostWindow> m_reports;
};

} // namespace

TEST_F(FrontmostReporterTest, ReportsThePresentStateAtOnceAndEachSettledSwitchWithTheInstantItBegan)
{
    m_front = window(1, "Term", "shell");
    follow();
    ASSERT_EQ(m_reports.size(), 1u);
    EXPECT_EQ(m_reports[0].application.identity.bundleIdentifier, "x11:term");
    EXPECT_EQ(m_reports[0].title, "shell");
    EXPECT_EQ(m_reports[0].application.observedAt, Instant{1000});

    m_time.advance({10});
    switchTo(std::nullopt);
    m_time.advance({0.01});
    switchTo(window(2, "Panel", ""));
    m_time.advance({0.01});
    switchTo(window(3, "Editor", "draft"));
    EXPECT_EQ(m_reports.size(), 1u);
    m_time.advance({0.1});
    ASSERT_EQ(m_reports.size(), 2u);
    EXPECT_EQ(m_reports[1].application.identity.bundleIdentifier, "x11:editor");
    EXPECT_EQ(m_reports[1].application.observedAt, Instant{1010});
}

TEST_F(FrontmostReporterTest, KeepsSilentAboutWhatDidNotStay)
{
    m_front = window(1, "Term", "shell");
    follow();
    switchTo(window(2, "Editor", "draft"));
    switchTo(window(1, "Term", "shell"));
    m_time.advance({1});
    switchTo(std::nullopt);
    m_time.advance({1});
    EXPECT_EQ(m_reports.size(), 1u);
}

TEST_F(FrontmostReporterTest, TellsATitleChangeFromASwitchThatFollowsIt)
{
    m_front = window(1, "Term", "shell");
    follow();
    m_time.advance({10});
    m_front->title = "editor";
    m_reporter.noteTitle();
    m_time.advance({1});
    ASSERT_EQ(m_reports.size(), 2u);
    EXPECT_EQ(m_reports[1].title, "editor");
    EXPECT_EQ(m_reports[1].application.observedAt, Instant{1010});

    m_time.advance({9});
    m_reporter.noteTitle();
    m_time.advance({0.05});
    switchTo(window(2, "Editor", "draft"));
    m_time.advance({1});
    ASSERT_EQ(m_reports.size(), 3u);
    EXPECT_EQ(m_reports[2].application.observedAt, Instant{1020.05});
}

TEST_F(FrontmostReporterTest, ReportsAnAnimatedTitleInTime)
{
    m_front = window(1, "Term", "0");
    follow();
    for (int i = 1; i <= 20; ++i) {
        m_front->title = std::to_string(i);
        m_reporter.noteTitle();
        m_time.advance({0.05});
    }
    EXPECT_GE(m_reports.size(), 8u);
    EXPECT_LE(m_reports.size(), 14u);
}

TEST_F(FrontmostReporterTest, NeverReportsWhatIsNeverRecorded)
{
    m_front = window(1, "Term", "shell");
    follow();
    switchTo(window(2, "velloran", "Today"));
    m_time.advance({1});
    EXPECT_EQ(m_reporter.current(), std::nullopt);
    EXPECT_EQ(m_reports.size(), 1u);
    // Back again: nothing has changed.
    switchTo(window(1, "Term", "shell"));
    m_time.advance({1});
    EXPECT_EQ(m_reports.size(), 1u);
    m_reporter.stop();
    switchTo(window(3, "Editor", "draft"));
    m_time.advance({1});
    EXPECT_EQ(m_reports.size(), 1u);
}

} // namespace stintbook
