#include <atomic>
#include <semaphore>

#include <gtest/gtest.h>

#include "Platform/StoreFileWatch.h"
#include "Support/CapturedLog.h"
#include "Support/TemporaryDirectory.h"

namespace stintbook {

TEST(StoreFileWatch, TellsOfEachWriteUntilItLooksElsewhere)
{
    const TemporaryDirectory directory;
    const auto file = directory / "log";
    writeFile(file, "");
    writeFile(directory / "other", "");
    std::counting_semaphore<> changes(0);
    std::atomic<int> others = 0;
    {
        StoreFileWatch watch;
        watch.watch(file, [&] { changes.release(); });
        for (const char* contents : {"one", "two"}) {
            writeFile(file, contents);
            EXPECT_TRUE(changes.try_acquire_for(std::chrono::seconds(10)));
            while (changes.try_acquire()) { }
        }
        watch.watch(directory / "other", [&] { ++others; });
        while (changes.try_acquire()) { }
        writeFile(file, "three");
    }
    EXPECT_FALSE(changes.try_acquire());
    EXPECT_EQ(others, 0);

    const CapturedLog log;
    StoreFileWatch().watch(directory / "missing", [] { });
    EXPECT_EQ(log.errors().size(), 1U);
}

} // namespace stintbook
