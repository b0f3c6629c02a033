#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <optional>

#include "Base/TimeSource.h"

namespace stintbook {

/// Wall clock, awake clock and timers that stand still until they are moved by hand: for replays and
/// tests. Work that comes due runs inside the call that moves time, in the order of its moments and, at
/// one moment, of its scheduling, with both clocks at that moment. One thread only.
class VirtualTime final : public TimeSource, public AwakeClock, public Timers {
public:
    explicit VirtualTime(Instant wall, Seconds awake = {});

    Instant now() const override { return m_wall; }
    Seconds awake() const override { return m_awake; }

    [[nodiscard]] std::unique_ptr<Scheduled> after(Seconds delay, std::function<void()> work) override;
    [[nodiscard]] std::unique_ptr<Scheduled> at(Instant deadline, std::function<void()> work) override;
    [[nodiscard]] std::unique_ptr<Scheduled> every(Seconds interval, std::function<void()> work) override;

    /// Time passes awake. `length` is not negative.
    void advance(Seconds length) { advanceTo(m_wall + length); }
    /// The same, until the wall clock shows exactly `wall`, which is not before now.
    void advanceTo(Instant wall);
    /// The machine sleeps: the wall clock goes on, the awake clock stands still. Deadlines passed
    /// meanwhile come due on waking.
    void sleep(Seconds length) { setWall(m_wall + length); }
    /// Somebody sets the clock, forward or back.
    void setWall(Instant wall);

private:
    struct Timer {
        std::function<void()> work;
        /// When it is due: by the wall clock where there is a deadline, else by the awake one.
        std::optional<Instant> deadline;
        Seconds awake;
        /// Present where it repeats.
        std::optional<Seconds> interval;
    };
    using Pending = std::map<std::uint64_t, Timer>;
    class Handle;

    std::unique_ptr<Scheduled> schedule(Timer timer);
    Seconds remaining(const Timer& timer) const;
    /// Runs the earliest timer that is due within `limit` from now; false when there is none.
    bool runNext(Seconds limit);

    Instant m_wall;
    Seconds m_awake;
    std::uint64_t m_nextKey = 0;
    std::shared_ptr<Pending> m_pending = std::make_shared<Pending>();
};

} // namespace stintbook
