#include <thread>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "Base/Log.h"
#include "Support/CapturedLog.h"

namespace stintbook {
namespace {

using testing::ElementsAre;

TEST(Log, KeepsEventsApartFromErrors)
{
    const CapturedLog captured;
    log::event("Saved {} segment(s)", 3);
    log::error("Deferred {} segment(s)", 1);
    EXPECT_THAT(captured.events(), ElementsAre("Saved 3 segment(s)"));
    EXPECT_THAT(captured.errors(), ElementsAre("Deferred 1 segment(s)"));
}

TEST(Log, TakesSentencesFromManyThreads)
{
    const CapturedLog captured;
    {
        std::vector<std::jthread> writers;
        for (int writer = 0; writer < 4; ++writer)
            writers.emplace_back([] {
                for (int i = 0; i < 100; ++i)
                    log::event("{}", i);
            });
    }
    EXPECT_EQ(captured.events().size(), 400U);
}

TEST(Log, ReturnsToTheFormerSink)
{
    const CapturedLog outer;
    {
        const CapturedLog inner;
        log::event("inner");
        EXPECT_THAT(inner.events(), ElementsAre("inner"));
    }
    log::event("outer");
    EXPECT_THAT(outer.events(), ElementsAre("outer"));
}

TEST(Log, FindsAPlaceOfItsOwnForWhatNobodyCaptures)
{
    log::event("The log works");
    EXPECT_TRUE(log::replaceSink({})) << "the place was found when the first sentence was written";
}

} // namespace
} // namespace stintbook
