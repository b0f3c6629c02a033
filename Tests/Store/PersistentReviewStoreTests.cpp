#include <array>
#include <functional>
#include <map>
#include <set>

#include <gmock/gmock.h>

#include "StoreSamples.h"

namespace stintbook {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

const auto client = sampleClient;
const auto project = sampleProject;

struct ReviewStore : testing::Test {
    std::shared_ptr<StoreDatabase> database = StoreDatabase::inMemory();
    PersistentReviewStore store{database};

    ReviewStore()
    {
        EXPECT_TRUE(store.saveClient({client, "Müller & Co"}));
        EXPECT_TRUE(store.saveProject({project, client, "Website"}));
    }

    template <typename Refusal, typename Result> static bool isRefusedWith(const Result& result)
    {
        return !result && std::holds_alternative<Refusal>(result.error());
    }
};

TEST_F(ReviewStore, ListsClientsAndProjectsInTheOrderOfTheirCreation)
{
    const Client second{numbered<ClientID>(0), "Zoë", true, ClientColor::fromText("1a2b3c")};
    ASSERT_TRUE(store.saveClient(second));
    ASSERT_TRUE(store.saveProject({numbered<ProjectID>(0), client, "Afterwards", false, true}));
    ASSERT_TRUE(store.saveClient({client, "Renamed", false, ClientColor::fromText("#ffffff")}));
    ASSERT_TRUE(store.saveClient({client, "Renamed"}));
    EXPECT_THAT(*store.clients(), ElementsAre(Client{client, "Renamed"}, second));
    EXPECT_THAT(*store.projects(),
                ElementsAre(Project{project, client, "Website"},
                            Project{numbered<ProjectID>(0), client, "Afterwards", false, true}));
}

TEST_F(ReviewStore, RefusesEditsOfTheClientListWithoutSavingAnything)
{
    ASSERT_TRUE(store.saveClient({numbered<ClientID>(2), "Archived", true}));
    const auto clients = *store.clients();
    const auto projects = *store.projects();
    EXPECT_TRUE(isRefusedWith<BlankNameRefused>(store.saveClient({numbered<ClientID>(3), " \n"})));
    EXPECT_TRUE(isRefusedWith<BlankNameRefused>(store.saveProject({project, client, ""})));
    EXPECT_TRUE(isRefusedWith<ProjectOwnershipRefused>(
        store.saveProject({project, numbered<ClientID>(2), "Website"})));
    EXPECT_TRUE(isRefusedWith<ArchivedClientRefused>(
        store.saveProject({numbered<ProjectID>(2), numbered<ClientID>(2), "New"})));
    EXPECT_TRUE(isRefusedWith<ArchivedClientRefused>(
        store.saveProject({numbered<ProjectID>(2), numbered<ClientID>(99), "Nobody's"})));
    EXPECT_EQ(*store.clients(), clients);
    EXPECT_EQ(*store.projects(), projects);
}

TEST_F(ReviewStore, CountsWhatNamesAClientAndDeletesOnlyAnUnusedOne)
{
    auto snapshot = sampleSnapshot(0);
    snapshot.clientFilterID.reset();
    snapshot.projectFilterID = project;
    ASSERT_TRUE(store.append(snapshot));
    const auto refused = store.deleteClient(client);
    ASSERT_TRUE(isRefusedWith<ClientDeletionRefused>(refused));
    EXPECT_EQ(std::get<ClientDeletionRefused>(refused.error()),
              (ClientDeletionRefused{{.exports = 1}, "Müller & Co"}))
        << "its project is named alone";

    ASSERT_TRUE(store.replaceAttributionRules({{.id = numbered<RuleID>(1),
                                                .match = {.titleContains = "x"},
                                                .clientID = client,
                                                .projectID = project}}));
    ASSERT_TRUE(store.apply(
        {.upserts = {sampleItem(0), sampleItem(1)},
         .reviewUpserts = {{numbered<SegmentID>(7), {AttributionAssignment{client, project, true}}},
                           {numbered<SegmentID>(8), {.isIgnored = true}}}}));
    ASSERT_TRUE(store.append(sampleSnapshot(1)));
    const auto census = *store.referenceCensus();
    EXPECT_EQ(census.byClient.at(client), (ClientReferences{1, 2, 1, 1}));
    EXPECT_EQ(census.byProject.at(project), (ClientReferences{1, 2, 1, 1}));
    EXPECT_TRUE(isRefusedWith<ClientDeletionRefused>(store.deleteProject(project)));

    const auto unused = numbered<ClientID>(2);
    ASSERT_TRUE(store.create({{unused, "Unused", false, ClientColor::fromText("#000000")},
                              {numbered<ProjectID>(2), unused, "First"},
                              ClientBillingDefaults{Decimal(10), std::nullopt}}));
    ASSERT_TRUE(store.saveProjectBilling(numbered<ProjectID>(2), {std::nullopt, RoundingPolicy::exact}));
    ASSERT_TRUE(store.deleteClient(unused));
    for (const auto& [table, left] :
         {std::pair("Client", 1), std::pair("ClientAppearance", 0), std::pair("ClientBilling", 0),
          std::pair("Project", 1), std::pair("ProjectBilling", 0)})
        EXPECT_EQ(number(*database, std::string("SELECT count(*) FROM ") + table), left) << table;
}

TEST_F(ReviewStore, ReplacesTheRulesOfAKindAsAWhole)
{
    const auto domain = BrowserDomain::fromText("example.org");
    const AttributionRule last{
        numbered<RuleID>(1), false, 5, {"org.example.Editor", domain, "É\0x"}, client, project, false};
    const AttributionRule first{
        numbered<RuleID>(2), true, -1, {std::nullopt, domain, std::nullopt}, client, project, {}};
    const AttributionRule tied{numbered<RuleID>(3), true, 5, {.titleContains = "t"}, client, project, true};
    const ExclusionRule exclusion{numbered<RuleID>(4), true, 0, {std::nullopt, domain, std::nullopt}};
    ASSERT_TRUE(store.replaceAttributionRules({tied, last, first}));
    ASSERT_TRUE(store.replaceExclusionRules({exclusion}));
    EXPECT_THAT(*store.attributionRules(), ElementsAre(first, last, tied));

    ASSERT_TRUE(store.replaceAttributionRules({tied}));
    EXPECT_THAT(*store.attributionRules(), ElementsAre(tied));
    EXPECT_THAT(*store.exclusionRules(), ElementsAre(exclusion));
    EXPECT_EQ(number(*database, "SELECT count(*) FROM RuleBrowserDomain"), 1);
}

TEST_F(ReviewStore, KeepsReviewsUntilTheyAreEmpty)
{
    const auto one = numbered<SegmentID>(1);
    const auto two = numbered<SegmentID>(2);
    const SegmentReview review{AttributionAssignment{client, project, false}, true, true};
    ASSERT_TRUE(store.saveReviews({{one, review}, {two, {.isConfirmed = true}}}));
    EXPECT_EQ(*store.reviews(std::vector{one, two, numbered<SegmentID>(3)}),
              (SegmentReviews{{one, review}, {two, {.isConfirmed = true}}}));
    ASSERT_TRUE(store.saveReviews({{one, {}}, {two, review}}));
    EXPECT_EQ(*store.reviews(std::vector{one, two}), (SegmentReviews{{two, review}}));
}

TEST_F(ReviewStore, FindsTheReviewsOfAStretchOfTime)
{
    PersistentActivitySegmentRepository segments(database);
    std::map<SegmentID, SegmentReview> reviews;
    // One after the other; the longest of them lies before others.
    const std::array<Interval, 4> recorded{
        {{{0}, {3600}}, {{3600}, {9000}}, {{9000}, {9600}}, {{9600}, {9900}}}};
    for (std::size_t i = 0; i < recorded.size(); ++i) {
        const ActivitySegment segment{
            .id = numbered<SegmentID>(i), .start = recorded[i].start, .end = recorded[i].end};
        ASSERT_TRUE(segments.save(std::vector{segment}));
        reviews.emplace(segment.id, SegmentReview{.isConfirmed = true});
    }
    ASSERT_TRUE(store.saveReviews(reviews));
    const auto in = [&](Interval when) {
        const auto found = *store.reviews(when);
        std::set<SegmentID> ids;
        for (const auto& [id, review] : found)
            ids.insert(id);
        return ids;
    };
    EXPECT_THAT(in({{3600}, {9600}}), ElementsAre(numbered<SegmentID>(1), numbered<SegmentID>(2)));
    EXPECT_THAT(in({{8999}, {9000}}), ElementsAre(numbered<SegmentID>(1)));
    EXPECT_THAT(in({{9900}, {20'000}}), IsEmpty());
    EXPECT_THAT(in({{4000}, {4000}}), IsEmpty());
}

TEST_F(ReviewStore, AppliesAMutationAsAWhole)
{
    auto changed = sampleItem(1);
    changed.description = "Call, \"offer\"";
    changed.disposition = ReviewedItemDisposition::ignored;
    changed.assignment.isBillable = false;
    auto manual = sampleItem(2);
    manual.origin = ReviewedItemOrigin::manual;
    manual.slices.clear();
    auto twoSlices = sampleItem(3);
    twoSlices.slices = {{numbered<SegmentID>(50), twoSlices.start, twoSlices.start + Seconds{20}},
                        {numbered<SegmentID>(51), twoSlices.start + Seconds{20}, twoSlices.end}};
    const ReviewedDayApproval approval{sampleDay, {std::string(64, 'f')}, {1795190000.25}};

    ASSERT_TRUE(store.apply({.upserts = {sampleItem(0), sampleItem(1)}}));
    ASSERT_TRUE(store.apply({.upserts = {twoSlices, manual, changed},
                             .deletions = {sampleItem(0).id},
                             .reviewUpserts = {{numbered<SegmentID>(1), {.isConfirmed = true}}},
                             .approval = approval}));
    EXPECT_THAT(*store.items(sampleDay), ElementsAre(changed, manual, twoSlices));
    EXPECT_THAT(*store.items({changed.end, manual.end}), ElementsAre(manual));
    EXPECT_EQ(*store.approval(sampleDay), approval);
    EXPECT_EQ(store.reviews(std::vector{numbered<SegmentID>(1)})->size(), 1U);
    EXPECT_EQ(number(*database, "SELECT count(*) FROM ReviewedSourceSlice"), 3);

    auto broken = sampleItem(0);
    broken.slices.clear();
    const auto refused = store.apply({.upserts = {sampleItem(4), broken}, .deletions = {changed.id}});
    ASSERT_FALSE(refused);
    EXPECT_TRUE(message(refused.error()).contains("observedItemHasNoSlices"));
    EXPECT_THAT(*store.items(sampleDay), ElementsAre(changed, manual, twoSlices));
}

TEST_F(ReviewStore, ListsDaysThatHaveItemsOrAnApproval)
{
    const LocalDay elsewhere{sampleDay.start, "Europe/Paris"};
    const LocalDay next{sampleDay.start + Seconds{86400}, "Europe/Berlin"};
    ASSERT_TRUE(store.apply(
        {.upserts = {sampleItem(0), sampleItem(1)}, .approval = ReviewedDayApproval{next, {"r"}, {}}}));
    ASSERT_TRUE(store.apply({.approval = ReviewedDayApproval{elsewhere, {"r"}, {}}}));
    EXPECT_THAT(*store.reviewedDays({}), ElementsAre(sampleDay, elsewhere, next));
    EXPECT_THAT(*store.reviewedDays(Interval{sampleDay.start, next.start}),
                ElementsAre(sampleDay, elsewhere));
    EXPECT_THAT(*store.reviewedDays(Interval{next.start, next.start}), IsEmpty());
    EXPECT_EQ(store.approval(elsewhere)->value().day, elsewhere);
    EXPECT_THAT(*store.items(elsewhere), IsEmpty());
}

TEST_F(ReviewStore, KeepsBillingExactly)
{
    const auto rate = Decimal::parse("0.12345678901234567890123456789012345678");
    const BillingSettings settings{BillingCurrency::fromText("EUR"), RoundingPolicy::upToNextSixMinutes};
    EXPECT_EQ(store.billing()->settings, BillingSettings{});
    ASSERT_TRUE(store.saveSettings(settings));
    ASSERT_TRUE(store.saveClientBilling(client, {rate, RoundingPolicy::exact}));
    ASSERT_TRUE(store.saveProjectBilling(project, {Decimal(0), std::nullopt}));
    const auto book = *store.billing();
    EXPECT_EQ(book.settings, settings);
    EXPECT_EQ(book.clients.at(client), (ClientBillingDefaults{rate, RoundingPolicy::exact}));
    EXPECT_EQ(book.projects.at(project), (ProjectBillingOverrides{Decimal(0), std::nullopt}));

    ASSERT_TRUE(store.saveClientBilling(client, {}));
    ASSERT_TRUE(store.saveSettings({std::nullopt, RoundingPolicy::exact}));
    EXPECT_TRUE(store.billing()->clients.empty());
    EXPECT_EQ(store.billing()->settings, (BillingSettings{std::nullopt, RoundingPolicy::exact}));
}

TEST_F(ReviewStore, KeepsSnapshotsInTheOrderOfTheirLinesAndNeverOverwritesOne)
{
    const auto snapshot = sampleSnapshot(0);
    const auto newer = sampleSnapshot(1);
    ASSERT_TRUE(store.append(newer));
    ASSERT_TRUE(store.append(snapshot));
    EXPECT_THAT(*store.snapshots(), ElementsAre(newer, snapshot));
    EXPECT_EQ(*store.snapshot(snapshot.id), snapshot);
    EXPECT_EQ(*store.snapshot(numbered<ExportSnapshotID>(99)), std::nullopt);

    auto again = snapshot;
    again.lines.pop_back();
    const auto refused = store.append(again);
    ASSERT_TRUE(isRefusedWith<ExportStoreProblem>(refused));
    EXPECT_EQ(std::get<ExportStoreProblem>(refused.error()).snapshotIdentityAlreadyExists, snapshot.id);
    EXPECT_EQ(*store.snapshot(snapshot.id), snapshot);
}

TEST_F(ReviewStore, TellsTheRevisionThatTheLatestExportOfADayHad)
{
    auto newer = sampleSnapshot(1);
    newer.days[0].revision = std::string(64, 'b');
    ASSERT_TRUE(store.append(newer));
    ASSERT_TRUE(store.append(sampleSnapshot(0)));
    const auto days = *store.exportedDays();
    ASSERT_EQ(days.size(), 1U);
    EXPECT_EQ(days[0].dayID + days[0].revision, dayID(sampleDay) + std::string(64, 'b'));
}

TEST_F(ReviewStore, CreatesAFirstContextWholeOrNotAtAll)
{
    const FirstWorkContext context{{numbered<ClientID>(9), "New"},
                                   {numbered<ProjectID>(9), numbered<ClientID>(9), "First"},
                                   ClientBillingDefaults{Decimal(80), std::nullopt}};
    const auto refusal = [&](const std::function<void(FirstWorkContext&)>& change) {
        auto changed = context;
        change(changed);
        return std::get<FirstWorkContextProblem>(store.create(changed).error());
    };
    EXPECT_EQ(refusal([](auto& changed) { changed.project.clientID = client; }).kind,
              FirstWorkContextProblem::Kind::projectNotOwnedByNewClient);
    EXPECT_EQ(refusal([](auto& changed) { changed.project.name = " "; }).field, "project name");
    EXPECT_EQ(refusal([](auto& changed) { changed.clientBilling->hourlyRate = Decimal(-1); }).field,
              "hourly rate");
    EXPECT_EQ(refusal([](auto& changed) { changed.client.id = changed.project.clientID = client; }).field,
              "client identifier");
    EXPECT_EQ(store.clients()->size(), 1U);

    ASSERT_TRUE(store.create(context));
    EXPECT_EQ(store.clients()->back(), context.client);
    EXPECT_EQ(store.projects()->back(), context.project);
    EXPECT_EQ(store.billing()->clients.at(context.client.id), *context.clientBilling);
}

} // namespace
} // namespace stintbook
