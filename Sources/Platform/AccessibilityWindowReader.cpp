#include "Platform/AccessibilityWindowReader.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <chrono>
#include <deque>
#include <filesystem>
#include <thread>

#include "Base/Try.h"
#include "Platform/PrivateWindows.h"

namespace stintbook {

namespace {

using Kind = BrowserDomainReading::Kind;

constexpr Seconds longestReading{1};
/// How long a program that lags behind its window is given between two looks.
constexpr Seconds lookAgainAfter{0.15};
/// Looks at the frames of a program whose accessible names have not caught up with the window's title.
constexpr int mostLooks = 3;
/// The number for a program that does not take the question.
constexpr std::int32_t notHandled = -1708;
/// What the search for the address field looks at, at most.
constexpr std::size_t mostVisited = 150;

std::unexpected<BrowserDomainReading> unread(Kind kind)
{
    return std::unexpected(BrowserDomainReading{.kind = kind});
}

std::unexpected<BrowserDomainReading> failed(std::int32_t number)
{
    return std::unexpected(BrowserDomainReading{.kind = Kind::failed, .errorNumber = number});
}

std::unexpected<BrowserDomainReading> unread(const BusProblem& problem)
{
    if (problem.isTimeout())
        return failed(-ETIMEDOUT);
    if (problem.name == SD_BUS_ERROR_ACCESS_DENIED)
        return unread(Kind::notAuthorized);
    // The program, or the window, went away between two questions.
    if (problem.isMissingService())
        return unread(Kind::browserNotRunning);
    if (problem.name == SD_BUS_ERROR_UNKNOWN_OBJECT || problem.name == SD_BUS_ERROR_UNKNOWN_METHOD)
        return unread(Kind::noFrontmostWindow);
    return failed(problem.code > 0 ? -problem.code : notHandled);
}

/// The answer to a question, or an early return of the reading that its failure comes to.
template <typename T> std::expected<T, BrowserDomainReading> answered(BusResult<T> result)
{
    if (!result)
        return unread(result.error());
    if constexpr (std::is_void_v<T>)
        return {};
    else
        return *std::move(result);
}

bool isRunning(std::int32_t processIdentifier)
{
    std::error_code error;
    return std::filesystem::exists("/proc/" + std::to_string(processIdentifier), error);
}

/// The window system's title and the frame's name are alike but for what one of them adds at its end.
bool isCandidate(const AccessibleFrame& frame, const std::string& title)
{
    if (title.empty())
        return frame.isActive;
    return !frame.name.empty() && (frame.name.starts_with(title) || title.starts_with(frame.name));
}

std::optional<AccessibleFrame> choose(const std::vector<AccessibleFrame>& candidates)
{
    if (candidates.size() == 1)
        return candidates.front();
    if (std::ranges::count_if(candidates, &AccessibleFrame::isActive) != 1)
        return std::nullopt;
    return *std::ranges::find_if(candidates, &AccessibleFrame::isActive);
}

bool isPrivate(const AccessibleFrame& frame, const FrontmostWindow& window)
{
    return isMarkedPrivate(frame.name) || isMarkedPrivate(window.title);
}

} // namespace

FocusedContext AccessibilityWindowReader::context(const FrontmostWindow& window)
{
    if (supportedBrowser(window.application.identity.bundleIdentifier)) {
        if (!begin())
            return FocusedContext::none();
        auto frame = frameOf(window);
        if (!frame || isPrivate(*frame, window))
            return FocusedContext::none();
    }
    return window.title.empty() ? FocusedContext::none() : FocusedContext::windowTitle(window.title);
}

BrowserDomainReading AccessibilityWindowReader::reading(const FrontmostWindow& window)
{
    const auto* browser = supportedBrowser(window.application.identity.bundleIdentifier);
    if (!browser)
        return {.kind = Kind::unsupportedBrowser};
    auto domain = [&]() -> Read<BrowserDomain> {
        TRY(begin());
        auto frame = TRY(frameOf(window));
        if (isPrivate(frame, window))
            return unread(Kind::pageHasNoWebDomain);
        return domainIn(frame, *browser, window.application.processIdentifier);
    }();
    return domain ? BrowserDomainReading{.kind = Kind::domain, .domain = *domain} : domain.error();
}

AccessibilityWindowReader::Read<void> AccessibilityWindowReader::begin()
{
    // No accessibility service at all: nobody can grant what it takes.
    if (auto connected = m_bus.begin(longestReading); !connected)
        return connected.error().isTimeout() ? failed(-ETIMEDOUT) : unread(Kind::notAuthorized);
    if (!TRY(answered(m_bus.isEnabled())))
        return unread(Kind::notDetermined);
    return {};
}

AccessibilityWindowReader::Read<AccessibleFrame> AccessibilityWindowReader::frameOf(
    const FrontmostWindow& window)
{
    auto frame = findFrame(window);
    for (int looks = 1; looks < mostLooks && !frame; ++looks) {
        if (frame.error().kind != Kind::noFrontmostWindow || !pause())
            break;
        frame = findFrame(window);
    }
    return frame;
}

AccessibilityWindowReader::Read<AccessibleFrame> AccessibilityWindowReader::findFrame(
    const FrontmostWindow& window)
{
    auto process = window.application.processIdentifier;
    auto programs = TRY(programsOf(process));
    std::vector<AccessibleFrame> candidates;
    for (const auto& program : programs) {
        for (const auto& object : TRY(answered(m_bus.children(program)))) {
            auto frame = TRY(answered(m_bus.frame(object)));
            // Where any program's may be it, its name has to hold all of the title.
            if (isCandidate(frame, window.title) && (process != 0 || frame.name.starts_with(window.title)))
                candidates.push_back(std::move(frame));
        }
    }
    if (auto frame = choose(candidates))
        return std::move(*frame);
    return unread(Kind::noFrontmostWindow);
}

/// All programs for a window whose process the window system does not tell.
AccessibilityWindowReader::Read<std::vector<AccessibleObject>> AccessibilityWindowReader::programsOf(
    std::int32_t processIdentifier)
{
    auto programs = TRY(answered(m_bus.applications()));
    if (processIdentifier == 0)
        return programs;
    std::vector<AccessibleObject> own;
    for (auto& program : programs) {
        auto process = m_bus.processOf(program);
        if (!process && process.error().isTimeout())
            return unread(process.error());
        if (process && *process == processIdentifier)
            own.push_back(std::move(program));
    }
    if (!own.empty())
        return own;
    // It runs, but was started before accessibility was switched on, or keeps itself out of it.
    return isRunning(processIdentifier) ? failed(notHandled) : unread(Kind::browserNotRunning);
}

AccessibilityWindowReader::Read<BrowserDomain> AccessibilityWindowReader::domainIn(
    const AccessibleFrame& frame, const SupportedBrowser& browser, std::int32_t processIdentifier)
{
    auto document = TRY(documentOf(frame, processIdentifier));
    Read<BrowserDomain> domain = unread(Kind::pageHasNoWebDomain);
    for (auto expression : browser.locationExpressions) {
        auto found = address(expression, frame, document);
        if (!found) {
            domain = std::unexpected(found.error());
            if (found.error().errorNumber == -ETIMEDOUT)
                return domain;
            continue;
        }
        if (found->empty())
            continue;
        if (auto host = BrowserDomain::fromAddress(*found))
            return *host;
        return unread(Kind::pageHasNoWebDomain);
    }
    return domain;
}

AccessibilityWindowReader::Read<std::optional<AccessibleObject>> AccessibilityWindowReader::documentOf(
    const AccessibleFrame& frame, std::int32_t processIdentifier)
{
    auto document = TRY(answered(m_bus.embedded(frame.object)));
    bool mayWake = !document && m_awakened.insert(processIdentifier).second;
    while (!document && mayWake && pause())
        document = TRY(answered(m_bus.embedded(frame.object)));
    return document;
}

AccessibilityWindowReader::Read<std::string> AccessibilityWindowReader::address(
    std::string_view expression, const AccessibleFrame& frame,
    const std::optional<AccessibleObject>& document)
{
    constexpr std::string_view ofDocument = " of front document";
    if (!expression.ends_with(ofDocument))
        return addressField(frame);
    if (!document)
        return std::string();
    auto key = std::string(expression.substr(0, expression.size() - ofDocument.size()));
    return answered(m_bus.documentAttribute(*document, key.c_str()));
}

/// The text of the entry in a tool bar; empty where there is none, or while its user types into it.
AccessibilityWindowReader::Read<std::string> AccessibilityWindowReader::addressField(
    const AccessibleFrame& frame)
{
    struct Place {
        AccessibleObject object;
        bool isInToolBar = false;
    };
    std::deque<Place> places{{frame.object}};
    for (std::size_t visited = 0; !places.empty() && visited < mostVisited; ++visited) {
        auto place = std::move(places.front());
        places.pop_front();
        auto role = TRY(answered(m_bus.role(place.object)));
        if (role == accessibleEntry && place.isInToolBar) {
            if (TRY(answered(m_bus.states(place.object))) & accessibleFocused)
                return std::string();
            auto text = TRY(answered(m_bus.text(place.object)));
            // Words to search for have no dot; an address may come without its scheme.
            if (text.find('.') == text.npos)
                return std::string();
            return text.find("://") == text.npos ? "https://" + text : text;
        }
        if (role == accessibleDocumentWeb)
            continue;
        for (auto& child : TRY(answered(m_bus.children(place.object))))
            places.push_back({std::move(child), place.isInToolBar || role == accessibleToolBar});
    }
    return std::string();
}

bool AccessibilityWindowReader::pause() const
{
    if (m_bus.timeLeft() < lookAgainAfter * 2)
        return false;
    std::this_thread::sleep_for(std::chrono::duration<double>(lookAgainAfter.value));
    return true;
}

} // namespace stintbook
