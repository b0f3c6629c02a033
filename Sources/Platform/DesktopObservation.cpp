#include "Platform/DesktopObservation.h"

#include <utility>

#include "Platform/AccessibilityFrontmostApplication.h"
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

/// Tells of every switch of applications before it passes it on.
class AttendedFrontmostApplication final : public FrontmostApplicationProviding {
public:
    AttendedFrontmostApplication(std::unique_ptr<FrontmostApplicationProviding> source,
                                 std::function<void()> onSwitch)
        : m_source(std::move(source))
        , m_onSwitch(std::move(onSwitch))
    {
    }

    std::optional<FrontmostWindow> current() override { return m_source->current(); }
    void follow(Follower follower) override
    {
        m_source->follow([this, follower = std::move(follower)](const FrontmostWindow& front) {
            if (m_inFront && *m_inFront != front.application.identity)
                m_onSwitch();
            m_inFront = front.application.identity;
            follower(front);
        });
    }
    void stop() override { m_source->stop(); }
    std::string name() const override { return m_source->name(); }

private:
    std::unique_ptr<FrontmostApplicationProviding> m_source;
    std::function<void()> m_onSwitch;
    std::optional<ApplicationIdentity> m_inFront;
};

std::unique_ptr<IdleStateProviding> idleFromBus(const TimeSource& timeSource, const AwakeClock& awakeClock)
{
    if (auto mutter = MutterIdle::find(awakeClock))
        return mutter;
    if (auto logind = LogindIdle::find(timeSource, awakeClock))
        return logind;
    return std::make_unique<NoIdle>();
}

std::unique_ptr<FrontmostApplicationProviding> frontmostOf(const WaylandConnection& compositor,
                                                           EventLoop& loop, const TimeSource& timeSource,
                                                           ApplicationIdentities& identities)
{
    if (WlrFrontmostApplication::isOfferedBy(compositor))
        return std::make_unique<WlrFrontmostApplication>(loop, timeSource, identities);
    return std::make_unique<AccessibilityFrontmostApplication>(loop, timeSource, identities);
}

} // namespace

/// Under a compositor there is an X server as well, which knows only some of the windows: the compositor
/// goes first.
DesktopObservation::DesktopObservation(EventLoop& loop, const TimeSource& timeSource,
                                       const AwakeClock& awakeClock)
    : m_boundaries(loop, timeSource)
    , m_zone(loop)
    , m_windowReader(std::make_shared<AccessibilityWindowReader>())
    , m_accessibilityTrust(std::make_shared<SystemAccessibilityTrust>())
{
    std::unique_ptr<FrontmostApplicationProviding> source;
    std::function<void()> restartIdle = [] { };
    if (auto compositor = WaylandConnection::open()) {
        source = frontmostOf(*compositor, loop, timeSource, m_identities);
        if (auto idle = WaylandIdle::find(loop, awakeClock)) {
            restartIdle = [measure = idle.get()] { measure->noteSwitch(); };
            m_idle = std::move(idle);
        }
    } else if (X11Connection::open()) {
        source = std::make_unique<X11FrontmostApplication>(loop, timeSource, m_identities);
        m_idle = std::make_unique<X11Idle>(awakeClock);
    } else {
        source = std::make_unique<NoFrontmostApplication>();
    }
    if (!m_idle)
        m_idle = idleFromBus(timeSource, awakeClock);
    m_frontmost = std::make_unique<AttendedFrontmostApplication>(std::move(source), [this, restartIdle] {
        restartIdle();
        m_boundaries.noteSwitch();
    });
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
