#include "Platform/AccessibilityFrontmostApplication.h"

#include <algorithm>
#include <functional>
#include <ranges>
#include <utility>

#include "Base/Log.h"
#include "Base/Try.h"

namespace stintbook {

namespace {

/// Programs do not tell of a changed title reliably. Also the time after which listening is tried again.
constexpr Seconds pollInterval{3};
/// A look blocks capture's thread.
constexpr Seconds longestLook{0.5};

constexpr const char* registry = "org.a11y.atspi.Registry";
constexpr const char* rootPath = "/org/a11y/atspi/accessible/root";

std::uint64_t numberOf(const AccessibleObject& frame)
{
    return std::hash<std::string>{}(frame.busName + frame.path);
}

} // namespace

AccessibilityFrontmostApplication::AccessibilityFrontmostApplication(EventLoop& loop,
                                                                     const TimeSource& timeSource,
                                                                     ApplicationIdentities& identities)
    : m_loop(loop)
    , m_reporter(loop, timeSource, identities, [this] { return read(); })
{
}

void AccessibilityFrontmostApplication::follow(Follower follower)
{
    listen();
    m_poll = m_loop.every(pollInterval, [this] {
        if (m_events || listen())
            m_reporter.noteTitle();
    });
    m_reporter.follow(std::move(follower));
}

void AccessibilityFrontmostApplication::stop()
{
    m_poll.reset();
    m_reporter.stop();
    m_slots.clear();
    m_events.reset();
}

bool AccessibilityFrontmostApplication::listen()
{
    auto events = [this]() -> BusResult<std::unique_ptr<BusConnection>> {
        TRY(m_bus.begin(longestLook));
        return BusConnection::at(TRY(m_bus.address()));
    }();
    if (!events)
        return false;
    m_events = std::move(*events);
    for (const char* event : {"window:activate", "window:deactivate", "object:state-changed:active"}) {
        auto registered =
            m_events->call({registry, "/org/a11y/atspi/registry", "org.a11y.atspi.Registry", "RegisterEvent"},
                           longestLook, "sass", event, 0, "");
        if (!registered)
            log::error("Programs cannot be asked to tell of {}: {}", event, registered.error().text);
    }
    auto frameIn = [](BusMessage& event) {
        const char* path = sd_bus_message_get_path(event.get());
        return AccessibleObject{event.sender(), path ? path : ""};
    };
    const std::string rule = "type='signal',interface='org.a11y.atspi.Event.";
    subscribe(rule + "Window',member='Activate'",
              [this, frameIn](BusMessage& event) { setActive(frameIn(event), true); });
    subscribe(rule + "Window',member='Deactivate'",
              [this, frameIn](BusMessage& event) { setActive(frameIn(event), false); });
    subscribe(rule + "Object',member='StateChanged',arg0='active'", [this, frameIn](BusMessage& event) {
        event.skip();
        setActive(frameIn(event), event.readInt32().value_or(0) != 0);
    });
    seed();
    m_events->attach(m_loop, [this] {
        m_slots.clear();
        m_active.clear();
        // Not at once: this is its own call.
        m_loop.post([gone = std::shared_ptr(std::move(m_events))] { });
    });
    return true;
}

void AccessibilityFrontmostApplication::subscribe(const std::string& rule, BusConnection::Handler handler)
{
    m_slots.push_back(m_events->onSignal(rule, std::move(handler)));
}

void AccessibilityFrontmostApplication::seed()
{
    m_active.clear();
    auto programs = m_bus.applications();
    if (!programs)
        return;
    for (const auto& program : *programs) {
        auto frames = m_bus.children(program);
        if (!frames)
            continue;
        for (const auto& object : *frames) {
            if (auto frame = m_bus.frame(object); frame && frame->isActive)
                m_active.push_back(object);
        }
    }
}

void AccessibilityFrontmostApplication::setActive(const AccessibleObject& frame, bool isActive)
{
    std::erase(m_active, frame);
    if (isActive)
        m_active.push_back(frame);
    m_reporter.noteSwitch();
}

std::optional<SeenWindow> AccessibilityFrontmostApplication::read()
{
    if (!m_bus.begin(longestLook))
        return std::nullopt;
    // Before anything was listened to there is only the question to all.
    if (!m_events)
        seed();
    while (!m_active.empty()) {
        if (auto seen = describe(m_active.back()))
            return seen;
        // It is gone, or does not answer.
        m_active.pop_back();
    }
    return std::nullopt;
}

std::optional<SeenWindow> AccessibilityFrontmostApplication::describe(const AccessibleObject& frame)
{
    AccessibleObject program{frame.busName, rootPath};
    // The question for the programs comes before all others.
    if (!m_bus.applications())
        return std::nullopt;
    auto title = m_bus.name(frame);
    auto programName = m_bus.name(program);
    auto process = m_bus.processOf(program);
    if (!title || !programName || !process)
        return std::nullopt;
    return SeenWindow{
        .window = numberOf(frame),
        .hints = {.applicationID = "", .windowClass = *programName, .processIdentifier = *process},
        .title = *title,
    };
}

} // namespace stintbook
