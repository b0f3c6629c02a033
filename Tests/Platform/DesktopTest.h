#pragma once

#include <functional>

#include <gtest/gtest.h>

#include "Platform/EventLoop.h"
#include "Support/PrivateDesktop.h"

namespace stintbook {

/// A test on a desktop of its own, with a loop for the code under test.
class DesktopTest : public testing::Test {
protected:
    /// Lets the loop run until the condition holds; false when it does not in time.
    bool comesTrue(const std::function<bool()>& condition, Seconds limit = {20})
    {
        // Also looks when nothing happens in the loop.
        auto looking = m_loop.every({0.02}, [] { });
        return m_loop.runUntil(condition, limit);
    }

    PrivateDesktop m_desktop;
    EventLoop m_loop;
    SystemTimeSource m_clock;
    SystemAwakeClock m_awakeClock;
};

} // namespace stintbook
