#pragma once

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

private:
    EventLoop& m_loop;
    std::unique_ptr<BusConnection> m_bus;
    BusConnection::Slot m_object;
    BusConnection::Slot m_application;
};

} // namespace stintbook
