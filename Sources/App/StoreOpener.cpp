#include "App/StoreOpener.h"

#include <utility>

namespace stintbook {

StoreOpener::StoreOpener(Attempt attempt, Executor& main, Timers& timers, std::shared_ptr<Executor> elsewhere)
    : m_attempt(std::make_shared<Attempt>(std::move(attempt)))
    , m_main(main)
    , m_timers(timers)
    , m_elsewhere(std::move(elsewhere))
{
}

void StoreOpener::attempt(int number, int count, Done done)
{
    const Confined<Attempt> opening(m_elsewhere, m_attempt);
    opening.ask([](Attempt& open) { return open(); }, m_main,
                [this, isAlive = std::weak_ptr(m_isAlive), number, count,
                 done = std::move(done)](Result result) mutable {
                    if (isAlive.expired())
                        return;
                    if (result || number == count)
                        return done(std::move(result), number);
                    m_next = m_timers.after(retryDelay, [this, number, count, done = std::move(done)] {
                        attempt(number + 1, count, done);
                    });
                });
}

} // namespace stintbook
