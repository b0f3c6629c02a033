#pragma once

#include <memory>

#include "Base/TimeSource.h"
#include "Capture/IdleStateProviding.h"
#include "Platform/X11Connection.h"

namespace stintbook {

/// Seconds since the last input of an X11 desktop, from the screen saver extension.
class X11Idle final : public IdleStateProviding {
public:
    explicit X11Idle(const AwakeClock& awakeClock);

    std::expected<IdleState, std::string> sample() override;
    std::string name() const override { return "xscreensaver"; }

private:
    /// A connection of its own: a sample then waits for no event and swallows none.
    std::unique_ptr<X11Connection> m_connection;
    const AwakeClock& m_awakeClock;
};

} // namespace stintbook
