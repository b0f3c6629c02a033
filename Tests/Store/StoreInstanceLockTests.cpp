#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include "Store/StoreInstanceLock.h"
#include "Support/CapturedLog.h"
#include "Support/TemporaryDirectory.h"

namespace stintbook {
namespace {

/// Runs `work` in another process; answers its exit status.
template <typename Work> int inAnotherProcess(Work work)
{
    const auto child = fork();
    if (child == 0)
        _exit(work());
    int status = 0;
    waitpid(child, &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

TEST(StoreInstanceLock, NamesTheProcessThatHoldsItAndIsFreeAfterThatDied)
{
    const TemporaryDirectory directory;
    const auto store = directory / "Velloran.store";
    const auto file = directory / "Velloran.store.lock";
    const auto heldBy = [&](std::optional<pid_t> holder) {
        return inAnotherProcess([&] {
            const auto second = StoreInstanceLock::acquire(store);
            return !second && second.error().processIdentifier == holder ? 0 : 1;
        });
    };
    ASSERT_EQ(inAnotherProcess([&] {
                  auto* const kept = new auto(StoreInstanceLock::acquire(store));
                  return *kept && (*kept)->isGuarded() ? 0 : 1;
              }),
              0);
    EXPECT_NE(contentsOf(file), "");

    const auto lock = StoreInstanceLock::acquire(store);
    ASSERT_TRUE(lock && lock->isGuarded());
    EXPECT_EQ(contentsOf(file), std::to_string(getpid()) + "\n");
    EXPECT_EQ(heldBy(getpid()), 0);
    writeFile(file, "no number\n");
    EXPECT_EQ(heldBy(std::nullopt), 0);
    EXPECT_EQ(contentsOf(file), "no number\n");
}

TEST(StoreInstanceLock, GoesOnUnguardedWithoutALockFile)
{
    const TemporaryDirectory directory;
    const CapturedLog log;
    const auto lock = StoreInstanceLock::acquire(directory / "missing/Velloran.store");
    ASSERT_TRUE(lock);
    EXPECT_FALSE(lock->isGuarded());
    EXPECT_EQ(log.errors(),
              std::vector<std::string>{
                  "Could not open the store lock; this launch is not guarded against a second copy"});
}

} // namespace
} // namespace stintbook
