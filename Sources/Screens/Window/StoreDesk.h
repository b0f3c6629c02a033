#pragma once

#include <QObject>
#include <QPointer>
#include <memory>
#include <optional>
#include <string>
#include <type_traits>
#include <utility>

#include "App/EditSession.h"
#include "App/OpenedStore.h"
#include "Base/Executor.h"

namespace stintbook {

/// The store as screens use it: through a connection and on a thread of its own, so that no window waits for it.
class StoreDesk {
public:
    /// What work is given, on the desk's thread.
    struct Workplace {
        OpenedStore& store;
        /// Of this session, for the user to take edits back.
        EditSession& session;
    };

    /// The main executor outlives the desk.
    StoreDesk(Environment variables, Executor& main);

    /// Runs `work(Workplace&)`, then `reply(its result)` on the window's thread, unless the receiver is gone by then.
    /// Work that is asked for while the store cannot be opened is answered by `refused(sentence)` instead.
    template <typename Work, typename Reply, typename Refused>
    void ask(QObject* receiver, Work work, Reply reply, Refused refused)
    {
        m_executor->post([room = m_room, &main = m_main, guard = QPointer<QObject>(receiver),
                          work = std::move(work), reply = std::move(reply),
                          refused = std::move(refused)]() mutable {
            if (auto problem = room->open()) {
                main.post([guard, refused = std::move(refused), problem = *std::move(problem)]() mutable {
                    if (guard)
                        refused(problem);
                });
                return;
            }
            Workplace place{*room->store, room->session};
            main.post([guard, reply = std::move(reply), result = work(place)]() mutable {
                if (guard)
                    reply(std::move(result));
            });
        });
    }

    /// Drops one's share of a value on the desk's thread: taking a whole day apart takes milliseconds.
    void letGo(std::shared_ptr<const void> value)
    {
        m_executor->post([value = std::move(value)]() mutable { value.reset(); });
    }

    /// For a use case that asks the desk's thread by itself; what it holds of the store does not outlive the desk.
    template <typename T> Confined<T> confined(std::shared_ptr<T> value) const
    {
        return {m_executor, std::move(value)};
    }

private:
    /// Belongs to the desk's thread.
    struct Room {
        explicit Room(Environment variables)
            : variables(std::move(variables))
        {
        }
        /// The sentence, when the store cannot be opened. Opens it the first time.
        std::optional<std::string> open();

        Environment variables;
        std::unique_ptr<OpenedStore> store;
        EditSession session;
    };

    Executor& m_main;
    std::shared_ptr<Room> m_room;
    std::shared_ptr<SerialExecutor> m_executor = std::make_shared<SerialExecutor>("screens");
};

} // namespace stintbook
