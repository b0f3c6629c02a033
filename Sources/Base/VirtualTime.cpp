#include "Base/VirtualTime.h"

#include <algorithm>
#include <utility>

namespace stintbook {

class VirtualTime::Handle final : public Scheduled {
public:
    Handle(std::weak_ptr<Pending> pending, std::uint64_t key)
        : m_pending(std::move(pending))
        , m_key(key)
    {
    }
    ~Handle() override
    {
        if (const auto pending = m_pending.lock())
            pending->erase(m_key);
    }
    Handle(const Handle&) = delete;
    Handle& operator=(const Handle&) = delete;

private:
    std::weak_ptr<Pending> m_pending;
    std::uint64_t m_key;
};

VirtualTime::VirtualTime(Instant wall, Seconds awake)
    : m_wall(wall)
    , m_awake(awake)
{
}

std::unique_ptr<Timers::Scheduled> VirtualTime::after(Seconds delay, std::function<void()> work)
{
    return schedule({.work = std::move(work), .awake = m_awake + delay});
}

std::unique_ptr<Timers::Scheduled> VirtualTime::at(Instant deadline, std::function<void()> work)
{
    return schedule({.work = std::move(work), .deadline = deadline});
}

std::unique_ptr<Timers::Scheduled> VirtualTime::every(Seconds interval, std::function<void()> work)
{
    return schedule({.work = std::move(work), .awake = m_awake + interval, .interval = interval});
}

std::unique_ptr<Timers::Scheduled> VirtualTime::schedule(Timer timer)
{
    const auto key = m_nextKey++;
    m_pending->emplace(key, std::move(timer));
    return std::make_unique<Handle>(m_pending, key);
}

Seconds VirtualTime::remaining(const Timer& timer) const
{
    return timer.deadline ? *timer.deadline - m_wall : timer.awake - m_awake;
}

bool VirtualTime::runNext(Seconds limit)
{
    const auto next = std::ranges::min_element(
        *m_pending, {}, [this](const Pending::value_type& entry) { return remaining(entry.second); });
    if (next == m_pending->end())
        return false;
    Timer& timer = next->second;
    const Seconds wait = std::max(remaining(timer), Seconds{});
    if (wait > limit)
        return false;

    // The clock that the timer goes by shows its moment exactly, not the sum of small steps.
    const bool isLater = wait > Seconds{};
    m_wall = isLater && timer.deadline ? *timer.deadline : m_wall + wait;
    m_awake = isLater && !timer.deadline ? timer.awake : m_awake + wait;

    if (timer.interval) {
        timer.awake += *timer.interval;
        const auto work = timer.work; // the handle may go while it runs
        work();
    } else {
        const auto work = std::move(timer.work);
        m_pending->erase(next);
        work();
    }
    return true;
}

void VirtualTime::advanceTo(Instant wall)
{
    while (m_wall <= wall && runNext(wall - m_wall)) { }
    if (m_wall < wall) {
        m_awake += wall - m_wall;
        m_wall = wall;
    }
}

void VirtualTime::setWall(Instant wall)
{
    m_wall = wall;
    while (runNext({})) { }
}

} // namespace stintbook
