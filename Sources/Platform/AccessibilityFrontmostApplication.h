#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "Platform/AccessibilityBus.h"
#include "Platform/FrontmostReporter.h"

namespace stintbook {

/// The frontmost application as programs tell it through accessibility: for Wayland desktops whose compositor
/// keeps it to itself.
///
/// Limited: a program without accessibility is not seen, and a change of title shows within seconds.
class AccessibilityFrontmostApplication final : public FrontmostApplicationProviding {
public:
    AccessibilityFrontmostApplication(EventLoop& loop, const TimeSource& timeSource,
                                      ApplicationIdentities& identities);

    std::optional<FrontmostWindow> current() override { return m_reporter.current(); }
    void follow(Follower follower) override;
    void stop() override;
    std::string name() const override { return "accessibility (limited)"; }

private:
    bool listen();
    void subscribe(const std::string& rule, BusConnection::Handler handler);
    /// Asks all programs for their active frames.
    void seed();
    void setActive(const AccessibleObject& frame, bool isActive);
    std::optional<SeenWindow> read();
    std::optional<SeenWindow> describe(const AccessibleObject& frame);

    EventLoop& m_loop;
    AccessibilityBus m_bus;
    std::unique_ptr<BusConnection> m_events;
    std::vector<BusConnection::Slot> m_slots;
    std::unique_ptr<Timers::Scheduled> m_poll;
    /// Programs tell of activation and deactivation in any order: the one that became active last and has
    /// not ceased to be is in front.
    std::vector<AccessibleObject> m_active;
    FrontmostReporter m_reporter;
};

} // namespace stintbook
