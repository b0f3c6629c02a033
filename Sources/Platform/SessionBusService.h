#pragma once

#include <deque>
#include <functional>
#include <memory>

#include "App/Ports/RunningInstance.h"
#include "Platform/BusConnection.h"

namespace stintbook {

/// Answers for the running copy on the session bus, on the loop's thread.
class SessionBusService final : public InstancePublishing {
public:
    explicit SessionBusService(EventLoop& loop)
        : m_loop(loop)
    {
    }

    /// The handler has to outlive this.
    bool publish(InstanceRequestHandling& handler) override;
    void announceStatus() override;

private:
    struct Methods;
    /// A request that holds capture's writer; it calls back when that is over.
    using Holding = std::move_only_function<void(std::function<void()> ended)>;

    /// False when too many wait already.
    bool enqueue(Holding request);
    void startNext();

    EventLoop& m_loop;
    InstanceRequestHandling* m_handler = nullptr;
    std::unique_ptr<BusConnection> m_bus;
    BusConnection::Slot m_object;
    BusConnection::Slot m_application;

    std::deque<Holding> m_waiting;
    bool m_isHolding = false;
    /// Present while capture has its moment between two requests.
    std::unique_ptr<Timers::Scheduled> m_rest;
    /// What comes back after the service's end finds this gone.
    std::shared_ptr<const bool> m_isAlive = std::make_shared<const bool>(true);
};

} // namespace stintbook
