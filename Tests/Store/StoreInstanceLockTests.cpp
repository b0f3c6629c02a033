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

TEST(StoreInstanceLock, NamesTheProcessThatHoldsIt)
{
    const TemporaryDirectory directory;
    const auto store = directory / "Velloran.store";
    const auto lock = StoreInstanceLock::acquire(store);
    ASSERT_TRUE(lock && lock->isGuarded());
    EXPECT_EQ(contentsOf(directory / "Velloran.store.lock"), std::to_string(getpid()) + "\n");

    const auto holder = getpid();
    EXPECT_EQ(inAnotherProcess([&] {
                  const auto second = StoreInstanceLock::acquire(store);
                  return !second && second.error().processIdentifier == holder ? 0 : 1;
              }),
              0);

    writeFile(directory / "Velloran.store.lock", "no number\n");
    EXPECT_EQ(inAnotherProcess([&] {
                  const auto second = StoreInstanceLock::acquire(store);
                  return !second && !second.error().processIdentifier ? 0 : 1;
              }),
              0);
    EXPECT_EQ(contentsOf(directory / "Velloran.store.lock"), "no number\n");
}

TEST(StoreInstanceLock, IsFreeAgainAfterItsHolderDied)
{
    const TemporaryDirectory directory;
    const auto store = directory / "Velloran.store";
    ASSERT_EQ(inAnotherProcess([&] {
                  auto* const kept = new auto(StoreInstanceLock::acquire(store));
                  return *kept && (*kept)->isGuarded() ? 0 : 1;
              }),
              0);
    EXPECT_NE(contentsOf(directory / "Velloran.store.lock"), "");

    const auto lock = StoreInstanceLock::acquire(store);
    ASSERT_TRUE(lock && lock->isGuarded());
    EXPECT_EQ(contentsOf(directory / "Velloran.store.lock"), std::to_string(getpid()) + "\n");
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
