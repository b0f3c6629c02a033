#pragma once

#include <expected>
#include <functional>
#include <memory>

#include "App/OpenedStore.h"
#include "Base/Executor.h"
#include "Base/TimeSource.h"

namespace stintbook {

/// Opens the store away from the main executor, to which it is confined and on which it answers.
class StoreOpener {
public:
    using Result = std::expected<std::unique_ptr<OpenedStore>, StoreOpeningProblem>;
    /// Runs on the other executor.
    using Attempt = std::function<Result()>;
    using Done = std::function<void(Result result, int attemptCount)>;

    static constexpr int retryCount = 3;
    static constexpr Seconds retryDelay{0.25};

    /// The executor and the timers outlive the opener; the timers are the main executor's.
    StoreOpener(Attempt attempt, Executor& main, Timers& timers, std::shared_ptr<Executor> elsewhere);

    /// Once.
    void open(Done done) { attempt(1, 1, std::move(done)); }
    /// Again and again until it succeeds, up to `retryCount` times in all. One at a time.
    void retry(Done done) { attempt(1, retryCount, std::move(done)); }

private:
    void attempt(int number, int count, Done done);

    std::shared_ptr<Attempt> m_attempt;
    Executor& m_main;
    Timers& m_timers;
    std::shared_ptr<Executor> m_elsewhere;
    std::unique_ptr<Timers::Scheduled> m_next;
    /// What comes back after the opener's end finds this gone.
    std::shared_ptr<const bool> m_isAlive = std::make_shared<const bool>(true);
};

} // namespace stintbook
