#include <thread>

#include <gtest/gtest.h>

#include "Base/Log.h"
#include "Support/CapturedLog.h"

namespace stintbook {
namespace {

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

TEST(Log, FindsAPlaceOfItsOwnForWhatNobodyCaptures)
{
    log::event("The log works");
    EXPECT_TRUE(log::replaceSink({})) << "the place was found when the first sentence was written";
}

} // namespace
} // namespace stintbook
