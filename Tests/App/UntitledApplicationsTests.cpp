#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "App/UntitledApplications.h"

namespace stintbook {
namespace {

ActivitySegment work(const std::string& name, double start, double end, ContextEvidence evidence)
{
    return {.start = Instant{start},
            .end = Instant{end},
            .application = ApplicationIdentity{"org.example." + name, name},
            .evidence = evidence};
}

TEST(UntitledApplications, AreThoseThatWereWorkedInForAWhileAndNeverToldATitle)
{
    using enum ContextEvidence;
    const std::vector segments{
        work("Kate", 0, 600, applicationOnly), work("Chromium", 600, 640, applicationOnly),
        // Read a moment after it came to the front.
        work("Firefox", 640, 900, applicationOnly), work("Firefox", 900, 910, applicationAndWindow),
        work("Chromium", 910, 930, applicationOnly), work("Files", 930, 989, applicationOnly)};
    EXPECT_THAT(untitledApplications(segments), testing::ElementsAre("Chromium", "Kate"));
}

} // namespace
} // namespace stintbook
