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
        auto looking = loop.every({0.02}, [] { });
        return loop.runUntil(condition, limit);
    }

    PrivateDesktop desktop;
    EventLoop loop;
    SystemTimeSource clock;
    SystemAwakeClock awakeClock;
};

} // namespace stintbook
