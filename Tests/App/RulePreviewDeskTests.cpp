#include <algorithm>

#include <gtest/gtest.h>

#include "App/RuleBook.h"
#include "App/RulePreviewDesk.h"
#include "Support/StoreOfADay.h"

namespace stintbook {
namespace {

/// Two days of browsing for two clients.
class RulePreviews : public testing::Test {
protected:
    RulePreviews()
    {
        const auto add = [&](Instant from, double minutes, const char* application, const char* host,
                             const char* title) {
            ActivitySegment segment{.id = SegmentID::random(),
                                    .start = from,
                                    .end = from + Seconds{minutes * 60},
                                    .application = ApplicationIdentity{application, application},
                                    .context = FocusedContext::windowTitle(title),
                                    .evidence = ContextEvidence::applicationAndWindow,
                                    .timeZone = world.calendar.stamp(from)};
            if (host != nullptr)
                segment.browserDomain = BrowserDomain::fromText(host);
            segments.push_back(segment);
            return segment.id.uuid;
        };
        design = add(world.at(13), 30, "firefox", "design.example.org", "Boards");
        add(world.at(13, 40), 10, "firefox", "design.example.org", "Übersicht");
        mail = add(world.at(14), 30, "firefox", "mail.example.net", "Inbox");
        othersMail = add(world.at(15), 20, "firefox", "mail.example.net", "Inbox");
        add(world.at(13) - Seconds{86400 * 29.0}, 10, "firefox", "design.example.org", "Boards");
        add(world.at(13) - Seconds{86400 * 30.0}, 10, "firefox", "design.example.org", "Boards");
        EXPECT_TRUE(world.store->segments().save(segments));
        ClientBook book(*world.store);
        other = *book.addClient({.name = "Other", .color = {}, .rate = {}, .rounding = {}});
        othersProject = *book.addProject(
            {.clientID = other, .name = "Shop", .isBillable = true, .rate = {}, .rounding = {}});
    }

    RulePreviewDesk desk() { return {*world.store, world.calendar}; }
    RulePreviewDesk::CorrectedWork work(UUID id)
    {
        return {.day = world.day, .id = id, .target = {}, .titleWords = {}};
    }
    void assign(UUID id, const WorkTarget& target)
    {
        ASSERT_TRUE(world.book().assign(world.day, std::vector{id}, target));
    }

    StoreOfADay world;
    std::vector<ActivitySegment> segments;
    UUID design;
    UUID mail;
    UUID othersMail;
    ClientID other;
    ProjectID othersProject;
};

TEST_F(RulePreviews, SuggestTheDomainUnlessOtherClientsAreOnItThenTheApplication)
{
    assign(design, world.target());
    assign(mail, world.target());
    const auto byDomain = desk().suggest(work(design)).value();
    EXPECT_EQ(byDomain.match, (RuleMatch{.browserDomain = BrowserDomain::fromText("design.example.org")}));
    EXPECT_EQ(byDomain.blockCount, 2);
    EXPECT_EQ(byDomain.billableOverride, std::nullopt);

    EXPECT_TRUE(desk().suggest(work(mail))->match.browserDomain);
    // What is not work counts for nobody.
    assign(othersMail, {other, othersProject, {}});
    const auto kept = world.book().ignore(world.day, std::vector{othersMail}).value();
    EXPECT_TRUE(desk().suggest(work(mail))->match.browserDomain);
    const auto item = kept.items.at(0).id.uuid;
    ASSERT_TRUE(world.book().restore(world.day, std::vector{item}));
    EXPECT_EQ(desk().suggest(work(mail))->match, (RuleMatch{.applicationBundleIdentifier = "firefox"}));
    // To the other client it is its own domain, and so far only another's as well.
    EXPECT_EQ(desk().suggest(work(item))->match, (RuleMatch{.applicationBundleIdentifier = "firefox"}));

    const auto editor = world.blockIDs().front();
    auto forOther = work(editor);
    EXPECT_EQ(std::get<NoSuggestion>(desk().suggest(forOther).error()), NoSuggestion::withoutTarget);
    forOther.target = WorkTarget{other, othersProject, false};
    forOther.titleWords = "report";
    const auto suggested = desk().suggest(forOther).value();
    EXPECT_EQ(suggested.match, (RuleMatch{.applicationBundleIdentifier = "kate", .titleContains = "report"}));
    EXPECT_EQ(suggested.billableOverride, false);
    EXPECT_EQ(suggested.blockCount, 0);
}

TEST_F(RulePreviews, CountWhatTheAcceptedRuleThenAttributes)
{
    assign(design, {world.client, world.project, false});
    auto words = work(design);
    words.titleWords = "uber";
    for (const auto& asked : {work(design), words}) {
        const auto suggestion = desk().suggest(asked).value();
        EXPECT_EQ(suggestion.billableOverride, false);
        ASSERT_TRUE(RuleBook(*world.store).accept(suggestion));
        EXPECT_EQ(RuleBook(*world.store).list()->attributionRules.front().id, suggestion.id);
        const auto blocks = world.book().open(world.day)->content().blocks;
        EXPECT_EQ(std::ranges::count(blocks, std::optional(suggestion.id),
                                     [](const WorkBlock& block) { return block.attribution.winningRuleID; }),
                  suggestion.blockCount);
        EXPECT_GT(suggestion.blockCount, 0);
    }
}

TEST_F(RulePreviews, TellWhatADraftWouldChangeBeforeItIsSaved)
{
    const auto now = world.at(23);
    const auto draft = [&](const char* domain, ClientID client, ProjectID project) {
        auto made = RuleDraft::ofNewRule(RuleID::random());
        made.conditions = {{RuleDimension::domain, domain}};
        made.clientID = client;
        made.projectID = project;
        return made;
    };
    auto all = draft("example.org", world.client, world.project);
    const auto first = desk().effect(all, usualPreviewDays, now).value();
    EXPECT_EQ(first.summary.counts.applies, 3);
    EXPECT_EQ(first.newlyAttributed, 3);
    EXPECT_EQ(desk().preview(usualPreviewDays, now)->rules.size(), 0U);
    ASSERT_TRUE(RuleBook(*world.store).save(all));

    // What its user assigned is no concern of the rules; the rest goes from the one rule to the other.
    assign(design, {other, othersProject, {}});
    const auto taken =
        desk().effect(draft("design.example.org", other, othersProject), usualPreviewDays, now).value();
    EXPECT_EQ(taken.newlyAttributed, 0);
    EXPECT_EQ(taken.attributedOtherwise, 2);
    EXPECT_EQ(description(taken),
              "It would attribute 3 blocks of the last 30 days. 2 are attributed otherwise now.");

    all.origin = RuleDraft::ExistingRule{};
    all.isEnabled = false;
    EXPECT_EQ(desk().effect(all, usualPreviewDays, now)->noLongerAttributed, 2);
    all.clientID.reset();
    EXPECT_FALSE(desk().effect(all, usualPreviewDays, now));
}

TEST_F(RulePreviews, CoverTheLastLocalDaysUpToToday)
{
    ASSERT_TRUE(RuleBook(*world.store)
                    .add({.match = {.application = {}, .domain = "example.org", .title = {}},
                          .clientID = world.client,
                          .projectID = world.project,
                          .billableOverride = {}}));
    const auto applied = [&](int days, Instant now) {
        const auto preview = desk().preview(days, now).value();
        return preview.countsByRule.begin()->second.applies;
    };
    EXPECT_EQ(applied(usualPreviewDays, world.at(8)), 3);
    EXPECT_EQ(applied(usualPreviewDays + 1, world.at(8)), 4);
    EXPECT_EQ(applied(1, world.at(23)), 2);
    EXPECT_EQ(applied(1, world.at(24)), 0);
    EXPECT_EQ(applied(366, world.at(0) - Seconds{1}), 2);
}

} // namespace
} // namespace stintbook
