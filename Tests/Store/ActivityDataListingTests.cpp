// What lists add to the records of the data document.

#include <gtest/gtest.h>

#include "Store/ActivityDataRecords.h"
#include "StoreSamples.h"

namespace stintbook {
namespace {

std::string json(const auto&... what)
{
    std::string text;
    JsonWriter writer(text);
    write(writer, what...);
    return text;
}

TEST(ActivityDataRecords, OfAListHaveWhatItAddsInTheOrderOfTheKeys)
{
    const Client client{sampleClient, "Acme", false, ClientColor::fromText("#a0b1c2")};
    const Project project{sampleProject, sampleClient, "Website", true, true};
    const std::string clientID = R"("00000000-0000-0000-0000-0000000000C1")";
    const std::string projectID = R"("00000000-0000-0000-0000-0000000000D1")";
    EXPECT_EQ(json(client, DirectoryListing{{1, 2, 3, 4}, Decimal::parse("87.50"), RoundingPolicy::exact}),
              R"({"colorHex":"#A0B1C2","hourlyRate":87.5,"id":)" + clientID
                  + R"(,"isArchived":false,"name":"Acme","references":)"
                    R"({"corrections":1,"exports":4,"reviewedItems":2,"rules":3},"rounding":"exact"})");
    EXPECT_EQ(json(project, DirectoryListing{}),
              R"({"clientID":)" + clientID + R"(,"defaultBillable":true,"id":)" + projectID
                  + R"(,"isArchived":true,"name":"Website","references":)"
                    R"({"corrections":0,"exports":0,"reviewedItems":0,"rules":0}})");
    EXPECT_TRUE(json(AttributionRule{.match = {.titleContains = "x"}}, true)
                    .contains(R"("isEnabled":true,"losesConflict":true,"match":)"));
    EXPECT_TRUE(json(summaryRows(sampleSnapshot(0).lines).front()).contains(R"("lineCount":1,)"));
}

} // namespace
} // namespace stintbook
