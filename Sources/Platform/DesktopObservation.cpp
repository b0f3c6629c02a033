#include "Platform/DesktopObservation.h"

#include <utility>

#include "Platform/BusIdle.h"
#include "Platform/WaylandIdle.h"
#include "Platform/WlrFrontmostApplication.h"
#include "Platform/X11FrontmostApplication.h"
#include "Platform/X11Idle.h"

namespace stintbook {

namespace {

/// Where no window system tells anything.
class NoFrontmostApplication final : public FrontmostApplicationProviding {
public:
    std::optional<FrontmostWindow> current() override { return std::nullopt; }
    void follow(Follower) override { }
    void stop() override { }
    std::string name() const override { return noSource; }

    static constexpr const char* noSource = "none";
};

class NoIdle final : public IdleStateProviding {
public:
    std::expected<IdleState, std::string> sample() override
    {
        return std::unexpected("Nothing on this desktop tells when the last input was.");
    }
    std::string name() const override { return "none"; }
};

struct Sources {
    std::unique_ptr<IdleStateProviding> idle;
    std::unique_ptr<FrontmostApplicationProviding> frontmost;
};

std::unique_ptr<IdleStateProviding> idleFromBus(const TimeSource& timeSource, const AwakeClock& awakeClock)
{
    if (auto mutter = MutterIdle::find(awakeClock))
        return mutter;
    if (auto logind = LogindIdle::find(timeSource, awakeClock))
        return logind;
    return std::make_unique<NoIdle>();
}

Sources ofWayland(const WaylandConnection& compositor, EventLoop& loop, const TimeSource& timeSource,
                  const AwakeClock& awakeClock, ApplicationIdentities& identities)
{
    Sources sources;
    auto wayland = WaylandIdle::find(loop, awakeClock);
    std::function<void()> onSwitch;
    if (wayland)
        onSwitch = [idle = wayland.get()] { idle->noteSwitch(); };
    if (WlrFrontmostApplication::isOfferedBy(compositor))
        sources.frontmost =
            std::make_unique<WlrFrontmostApplication>(loop, timeSource, identities, std::move(onSwitch));
    else
        sources.frontmost = std::make_unique<NoFrontmostApplication>();
    if (wayland)
        sources.idle = std::move(wayland);
    else
        sources.idle = idleFromBus(timeSource, awakeClock);
    return sources;
}

/// Under a compositor there is an X server as well, which knows only some of the windows: the compositor
/// goes first.
Sources choose(EventLoop& loop, const TimeSource& timeSource, const AwakeClock& awakeClock,
               ApplicationIdentities& identities)
{
    if (auto compositor = WaylandConnection::open())
        return ofWayland(*compositor, loop, timeSource, awakeClock, identities);
    if (X11Connection::open())
        return {std::make_unique<X11Idle>(awakeClock),
                std::make_unique<X11FrontmostApplication>(loop, timeSource, identities)};
    return {idleFromBus(timeSource, awakeClock), std::make_unique<NoFrontmostApplication>()};
}

} // namespace

DesktopObservation::DesktopObservation(EventLoop& loop, const TimeSource& timeSource,
                                       const AwakeClock& awakeClock)
    : m_boundaries(loop, timeSource)
    , m_zone(loop)
    , m_windowReader(std::make_shared<AccessibilityWindowReader>())
    , m_accessibilityTrust(std::make_shared<SystemAccessibilityTrust>())
{
    auto sources = choose(loop, timeSource, awakeClock, m_identities);
    m_idle = std::move(sources.idle);
    m_frontmost = std::move(sources.frontmost);
}

bool DesktopObservation::canSeeApplications() const
{
    return m_frontmost->name() != NoFrontmostApplication::noSource;
}

std::vector<std::string> DesktopObservation::sources() const
{
    return {"frontmost: " + m_frontmost->name(), "idle: " + m_idle->name(),
            "boundaries: " + m_boundaries.name()};
}

} // namespace stintbook
