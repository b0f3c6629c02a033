#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "App/ExcludedApplicationsModel.h"
#include "App/LaunchAtLogin.h"
#include "Support/CapturedLog.h"
#include "Support/StoreOfADay.h"

namespace stintbook {

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

/// What its user removes by hand, and what cannot be removed otherwise.
struct Registration final : LaunchAtLoginRegistering {
    bool isRegistered() const override { return isThere; }
    std::expected<void, std::string> add() override
    {
        isThere = true;
        return {};
    }
    std::expected<void, std::string> remove() override { return std::unexpected("Read-only file system"); }

    bool isThere = false;
};

} // namespace

TEST(LaunchAtLogin, ShowsWhatTheDesktopSaysAndWhyAWishWasNotGranted)
{
    const CapturedLog log;
    Registration registration;
    LaunchAtLogin launch(registration);
    int tellings = 0;
    const auto listening = launch.follow([&] { ++tellings; });
    launch.setEnabled(true);
    launch.setEnabled(false);
    EXPECT_TRUE(launch.isEnabled());
    EXPECT_EQ(launch.problemMessage(),
              "Velloran could not change this. You can add it in your desktop's settings, under Startup "
              "Applications or Autostart.");
    registration.isThere = false;
    launch.refresh();
    EXPECT_FALSE(launch.isEnabled());
    launch.setEnabled(true);
    EXPECT_FALSE(launch.problemMessage());
    EXPECT_EQ(tellings, 4);
}

TEST(ExcludedApplicationsModel, KeepsARuleForEachApplicationAndLeavesOtherRulesAlone)
{
    StoreOfADay stored;
    RuleBook book(*stored.store);
    ASSERT_TRUE(book.addExclusion({.application = "kate", .domain = {}, .title = "private"}));
    for (int copy = 0; copy < 2; ++copy)
        ASSERT_TRUE(book.addExclusion({.application = "konsole", .domain = {}, .title = {}}));
    InlineExecutor main;
    ExcludedApplicationsModel model(
        {std::make_shared<InlineExecutor>(), std::make_shared<RuleBook>(book)}, main,
        [](const std::string& identifier) -> std::string { return identifier == "kate" ? "Écrire" : ""; });
    model.reload();
    model.exclude("kate");
    model.exclude("konsole");
    EXPECT_THAT(
        model.applications(),
        ElementsAre(ExcludedApplication{"kate", "Écrire"}, ExcludedApplication{"konsole", "konsole"}));
    EXPECT_EQ(book.list()->exclusionRules.size(), 4U);
    // Newest first.
    const auto kate = book.list()->exclusionRules[0].id;
    ASSERT_TRUE(book.setExclusionEnabled(kate, false));
    model.reload();
    EXPECT_THAT(model.applications(), ElementsAre(ExcludedApplication{"konsole", "konsole"}));
    ASSERT_TRUE(book.setExclusionEnabled(kate, true));
    model.reload();
    model.include("konsole");
    model.include("kate");
    EXPECT_THAT(model.applications(), IsEmpty());
    ASSERT_EQ(book.list()->exclusionRules.size(), 1U);
    EXPECT_EQ(book.list()->exclusionRules[0].match.titleContains, "private");

    const auto blocking = stored.open();
    std::ignore = blocking->database().write([&](StoreConnection&) -> Stored<void> {
        model.exclude("gimp");
        return {};
    });
    EXPECT_EQ(model.problemMessage(), "The excluded applications could not be saved.");
    EXPECT_THAT(model.applications(), IsEmpty());
}

} // namespace stintbook
