// Everything out of a store, and into another one.

#include <gtest/gtest.h>

#include "ActivityDataCopies.h"
#include "Support/RandomLedger.h"

namespace stintbook {
namespace {

TEST(ActivityData, HasTheKeysAndFormsOfItsFirstVersion)
{
    const auto database = StoreDatabase::inMemory();
    ASSERT_EQ(imported(*database, documentOfEverything()), "");
    EXPECT_EQ(exported(*database), documentOfEverything());
}

TEST(ActivityData, IsTheSameAgainAfterAnImport)
{
    for (unsigned seed = 1; seed <= 60; ++seed) {
        SCOPED_TRACE(seed);
        const auto original = StoreDatabase::inMemory();
        ASSERT_TRUE(RandomLedger(seed).fill(original));
        const auto document = exported(*original);

        const auto copy = StoreDatabase::inMemory();
        ASSERT_EQ(imported(*copy, document), "");
        ASSERT_EQ(exported(*copy), document);
        // Not only the document: of exports at one instant, the same one is the latest.
        EXPECT_EQ(PersistentReviewStore(copy).snapshots(), PersistentReviewStore(original).snapshots());
        EXPECT_EQ(PersistentActivitySegmentRepository(copy).segments(allTime),
                  PersistentActivitySegmentRepository(original).segments(allTime));
        EXPECT_EQ(
            imported(*copy, document),
            "The store holds something already, and an import needs an empty one. Nothing was imported.");
    }
}

TEST(ActivityData, IsOfOneStateWhileARecorderSaves)
{
    const SampleStore store;
    const auto owner = store.open();
    PersistentActivitySegmentRepository recorder(owner);
    ASSERT_TRUE(recorder.save(sampleSegments(0, 1000)));
    const auto guest = store.open(StoreRole::guest);
    const auto before = exported(*guest);

    std::string document;
    const auto written =
        writeActivityData(*guest,
                          {.exportedAt = {1795200000.5},
                           .sink = [&](std::string_view bytes) -> std::expected<void, std::string> {
                               // In the midst of it, and the owner does not wait.
                               EXPECT_TRUE(recorder.save(sampleSegments(1000 + document.size() % 400, 1)));
                               EXPECT_TRUE(PersistentReviewStore(owner).saveClient(
                                   {.id = numbered<ClientID>(9), .name = "New"}));
                               document += bytes;
                               return {};
                           }});
    EXPECT_TRUE(written);
    EXPECT_EQ(document, before);
    EXPECT_NE(exported(*guest), before);
}

TEST(ActivityData, ThatCannotBeReadIsToldByItsGroup)
{
    const auto refusal = [](const std::vector<std::string>& damage) {
        const auto database = StoreDatabase::inMemory();
        EXPECT_EQ(imported(*database, documentOfEverything()), "");
        for (const auto& sql : damage)
            execute(*database, sql);
        return exported(*database);
    };
    const std::string recorded = "UPDATE ActivitySegment SET kindRaw = 'play'";
    const std::string review = "UPDATE ClientAppearance SET colorHex = 'red'";
    const std::string billing = "UPDATE BillingSettings SET currencyCode = 'none'";
    EXPECT_EQ(refusal({recorded}), "Recorded activity could not be read, so nothing was exported.");
    EXPECT_EQ(refusal({review}),
              "Your clients, rules and reviewed work could not be read, so nothing was exported.");
    EXPECT_EQ(refusal({billing}),
              "Billing settings and export history could not be read, so nothing was exported.");
    // Of several the one that is read first, wherever it stands in the document.
    EXPECT_EQ(refusal({billing, review}), refusal({review}));
    EXPECT_EQ(refusal({billing, review, recorded}), refusal({recorded}));
    EXPECT_EQ(refusal({"DROP TABLE ExportLine"}), refusal({billing}));
}

} // namespace
} // namespace stintbook
