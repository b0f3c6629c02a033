#pragma once

#include <functional>
#include <future>
#include <memory>
#include <string>
#include <thread>
#include <type_traits>
#include <utility>

namespace stintbook {

/// Runs jobs one after the other in the order in which they were posted.
class Executor {
public:
    using Job = std::move_only_function<void()>;

    virtual ~Executor() = default;
    virtual void post(Job job) = 0;
};

/// Runs every job at once, on the caller's thread: what a replay and most tests use.
class InlineExecutor final : public Executor {
public:
    void post(Job job) override { job(); }
};

/// One thread of its own. Destruction runs what was posted, also by those jobs, then joins. Destroyed by
/// a job of its own, as when that held the last reference, it leaves the thread to finish alone.
class SerialExecutor final : public Executor {
public:
    /// The name shows in debuggers; at most 15 bytes of it.
    explicit SerialExecutor(const std::string& name);
    ~SerialExecutor() override;
    SerialExecutor(const SerialExecutor&) = delete;
    SerialExecutor& operator=(const SerialExecutor&) = delete;

    void post(Job job) override;

private:
    struct Queue;

    std::shared_ptr<Queue> m_queue;
    std::thread m_thread;
};

/// Owns a `T` together with the executor on which alone it may be touched.
///
/// The `T` lives as long as any job that was posted for it.
template <typename T> class Confined {
public:
    Confined(std::shared_ptr<Executor> executor, std::shared_ptr<T> value)
        : m_executor(std::move(executor))
        , m_value(std::move(value))
    {
    }

    /// Runs `work(T&)` on the executor; the result comes by future.
    template <typename Work> auto ask(Work work) const -> std::future<std::invoke_result_t<Work, T&>>
    {
        std::packaged_task<std::invoke_result_t<Work, T&>()> task(
            [value = m_value, work = std::move(work)]() mutable { return work(*value); });
        auto result = task.get_future();
        m_executor->post(std::move(task));
        return result;
    }

    /// Runs `work(T&)` on the executor, then `continuation(result)` on another one, which outlives both;
    /// `continuation()` where the work has no result.
    template <typename Work, typename Continuation>
    void ask(Work work, Executor& continuationExecutor, Continuation continuation) const
    {
        m_executor->post([value = m_value, work = std::move(work), &continuationExecutor,
                          continuation = std::move(continuation)]() mutable {
            if constexpr (std::is_void_v<std::invoke_result_t<Work, T&>>) {
                work(*value);
                continuationExecutor.post(std::move(continuation));
            } else {
                continuationExecutor.post(
                    [result = work(*value), continuation = std::move(continuation)]() mutable {
                        continuation(std::move(result));
                    });
            }
        });
    }

    /// Runs `work(T&)` on the executor and waits for it. Never called from that executor's own jobs.
    template <typename Work> auto wait(Work work) const { return ask(std::move(work)).get(); }

private:
    std::shared_ptr<Executor> m_executor;
    std::shared_ptr<T> m_value;
};

} // namespace stintbook
