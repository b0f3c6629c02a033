#pragma once

#include <QObject>
#include <QPointer>
#include <memory>
#include <string>
#include <utility>

#include "Base/Executor.h"

namespace stintbook {

/// A thread for what would hold up the window: files, buses, other programs. It begins with the first errand.
class Errands {
public:
    /// The main executor outlives the errands.
    Errands(std::string name, Executor& main)
        : m_name(std::move(name))
        , m_main(main)
    {
    }

    /// Runs `work()` there, then `reply(its result)` on the window's thread, unless the receiver is gone by then.
    template <typename Work, typename Reply> void run(QObject* receiver, Work work, Reply reply)
    {
        if (!m_executor)
            m_executor = std::make_unique<SerialExecutor>(m_name);
        m_executor->post([&main = m_main, guard = QPointer<QObject>(receiver), work = std::move(work),
                          reply = std::move(reply)]() mutable {
            main.post([guard, reply = std::move(reply), result = work()]() mutable {
                if (guard)
                    reply(std::move(result));
            });
        });
    }

private:
    std::string m_name;
    Executor& m_main;
    std::unique_ptr<SerialExecutor> m_executor;
};

} // namespace stintbook
