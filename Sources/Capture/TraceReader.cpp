#include "Capture/TraceReader.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <string_view>
#include <utility>

#include <fmt/format.h>

#include "Base/JsonReader.h"
#include "Base/Try.h"

namespace stintbook {

namespace {

using Event = decltype(TraceLine::event);

JsonRead<CalendarContext> jsonCalendar(const JsonValue& value)
{
    const auto identifier = TRY(value.text());
    if (auto calendar = CalendarContext::inZone(identifier))
        return *std::move(calendar);
    return value.problem(fmt::format("names no known zone: \"{}\"", identifier));
}

JsonRead<Event> start(const JsonValue& value, Instant at)
{
    auto members = TRY(JsonObject::of(value));
    auto calendar = TRY(members.required("timeZone", jsonCalendar));
    const auto permission = TRY(members.optional("permission", jsonCase<CapturePermissionState>));
    const auto retainsTitleContext = TRY(members.optional("retainsTitleContext", jsonFlag));
    const auto browserContextEnabled = TRY(members.optional("browserContextEnabled", jsonFlag));
    TRY(members.mustHoldNothingElse());
    return CaptureStart{.at = at,
                        .calendar = std::move(calendar),
                        .permission = permission.value_or(CapturePermissionState::granted),
                        .retainsTitleContext = retainsTitleContext.value_or(true),
                        .browserContextEnabled = browserContextEnabled.value_or(false)};
}

JsonRead<Event> frontmost(const JsonValue& value, Instant at)
{
    auto members = TRY(JsonObject::of(value));
    input::Frontmost frontmost{.at = at};
    frontmost.snapshot.observedAt = at;
    frontmost.snapshot.identity.bundleIdentifier = TRY(members.required("bundleIdentifier", jsonText));
    if (frontmost.snapshot.identity.bundleIdentifier.empty())
        return members.problem("bundleIdentifier", "is empty");
    frontmost.snapshot.identity.displayName = TRY(members.required("displayName", jsonText));
    frontmost.snapshot.processIdentifier =
        TRY(members.optional("processIdentifier", jsonInteger)).value_or(0);

    // An empty title says no more than none; the document counts before the window.
    auto windowTitle = TRY(members.optional("windowTitle", jsonText)).value_or("");
    auto documentTitle = TRY(members.optional("documentTitle", jsonText)).value_or("");
    TRY(members.mustHoldNothingElse());
    if (!documentTitle.empty())
        frontmost.focused = FocusedContext::documentTitle(std::move(documentTitle));
    else if (!windowTitle.empty())
        frontmost.focused = FocusedContext::windowTitle(std::move(windowTitle));
    return PipelineInput(std::move(frontmost));
}

JsonRead<Event> browserDomain(const JsonValue& value, Instant at)
{
    using Kind = BrowserDomainReading::Kind;
    /// What a failure without a number of its own counts as: an event that nobody handled.
    constexpr std::int32_t unknownFailure = -1708;

    auto members = TRY(JsonObject::of(value));
    input::BrowserDomainPolled poll{.at = at};
    auto& reading = poll.reading;
    poll.browserBundleIdentifier = TRY(members.required("browser", jsonText));
    reading.kind = TRY(members.required("reading", jsonCase<Kind>));
    if (reading.kind == Kind::failed)
        reading.errorNumber = TRY(members.optional("code", jsonInteger)).value_or(unknownFailure);
    if (reading.kind == Kind::domain) {
        reading.domain = BrowserDomain::fromText(TRY(members.required("host", jsonText)));
        if (!reading.domain)
            reading.kind = Kind::pageHasNoWebDomain;
    }
    TRY(members.mustHoldNothingElse());
    return PipelineInput(std::move(poll));
}

JsonRead<Event> idleSample(const JsonValue& value, Instant at)
{
    auto members = TRY(JsonObject::of(value));
    const Seconds idle{TRY(members.required("idleSeconds", jsonDouble))};
    if (idle < Seconds{})
        return members.problem("idleSeconds", "is negative");
    if (at - idle < yearOne)
        return members.problem("idleSeconds", "reaches back before the year 1");
    const Seconds awake{TRY(members.required("awakeSeconds", jsonDouble))};
    TRY(members.mustHoldNothingElse());
    return PipelineInput(input::IdleSample{idle, awake, at});
}

JsonRead<Event> noObservation(const JsonValue& value, Instant at)
{
    auto members = TRY(JsonObject::of(value));
    const auto since = TRY(members.required("since", jsonInstant));
    if (at < since)
        return members.problem("since", "lies after \"at\"");
    TRY(members.mustHoldNothingElse());
    return PipelineInput(input::NoObservation{since, at});
}

JsonRead<Event> suspended(const JsonValue& value, Instant at)
{
    const auto reason = TRY(jsonCase<GapReason>(value));
    if (reason != GapReason::systemSleep && reason != GapReason::sessionInactive)
        return value.problem(fmt::format("cannot be \"{}\"", rawValue(reason)));
    return PipelineInput(input::Boundary{ActivitySuspended{reason, at}, at});
}

JsonRead<Event> resumed(const JsonValue& value, Instant at)
{
    return PipelineInput(input::Boundary{ActivityResumed{TRY(jsonCase<SystemResumeCause>(value)), at}, at});
}

JsonRead<Event> pause(const JsonValue& value, Instant at)
{
    auto members = TRY(JsonObject::of(value));
    const auto until = TRY(members.optional("until", jsonInstant));
    TRY(members.mustHoldNothingElse());
    return PipelineInput(input::Pause{until, until ? *until - at : Seconds{}, at});
}

JsonRead<Event> permission(const JsonValue& value, Instant at)
{
    return PipelineInput(input::PermissionChanged{TRY(jsonCase<CapturePermissionState>(value)), at});
}

JsonRead<Event> timeZone(const JsonValue& value, Instant at)
{
    return PipelineInput(input::CalendarContextChanged{TRY(jsonCalendar(value)), at});
}

JsonRead<Event> retainsTitleContext(const JsonValue& value, Instant at)
{
    return PipelineInput(input::TitleContextRetained{TRY(jsonFlag(value)), at});
}

JsonRead<Event> browserContextEnabled(const JsonValue& value, Instant at)
{
    return PipelineInput(input::BrowserContextEnabled{TRY(jsonFlag(value)), at});
}

JsonRead<Event> store(const JsonValue& value, Instant /*at*/)
{
    const auto what = TRY(value.text());
    if (what != "refuse" && what != "accept")
        return value.problem(fmt::format("cannot be \"{}\"", what));
    return TraceStoreSwitch{what == "refuse"};
}

JsonRead<Event> clockSet(const JsonValue& value, Instant at)
{
    auto members = TRY(JsonObject::of(value));
    const auto from = TRY(members.required("from", jsonInstant));
    TRY(members.mustHoldNothingElse());
    return PipelineInput(input::ClockSet{from, at});
}

/// An input that says no more than its name.
template <typename MakeInput> JsonRead<Event> bare(const JsonValue& value, MakeInput makeInput)
{
    const auto members = TRY(JsonObject::of(value));
    TRY(members.mustHoldNothingElse());
    return PipelineInput(makeInput());
}

JsonRead<Event> resume(const JsonValue& value, Instant at)
{
    return bare(value, [&] { return input::Resume{at}; });
}

JsonRead<Event> hold(const JsonValue& value, Instant at)
{
    return bare(value, [&] { return input::ResolveForDeletion{[](CaptureWriterBarrierOutcome) { }, at}; });
}

JsonRead<Event> release(const JsonValue& value, Instant at)
{
    return bare(value, [&] { return input::ReleaseAfterDeletion{[] { }, at}; });
}

JsonRead<Event> stop(const JsonValue& value, Instant at)
{
    return bare(value, [&] { return input::Stop{at}; });
}

using ReadEvent = JsonRead<Event> (*)(const JsonValue&, Instant);

/// The most frequent first.
constexpr auto events = std::to_array<std::pair<std::string_view, ReadEvent>>({
    {"idleSample", idleSample},
    {"frontmost", frontmost},
    {"browserDomain", browserDomain},
    {"suspended", suspended},
    {"resumed", resumed},
    {"noObservation", noObservation},
    {"pause", pause},
    {"resume", resume},
    {"permission", permission},
    {"timeZone", timeZone},
    {"retainsTitleContext", retainsTitleContext},
    {"browserContextEnabled", browserContextEnabled},
    {"store", store},
    {"clockSet", clockSet},
    {"hold", hold},
    {"release", release},
    {"start", start},
    {"stop", stop},
});

JsonRead<TraceLine> readLine(const JsonValue& line)
{
    auto members = TRY(JsonObject::of(line));
    const auto at = TRY(members.required("at", jsonInstant));
    const auto name = members.nextKey();
    if (!name)
        return line.problem("has no input beside \"at\"");
    const auto found = std::ranges::find(events, *name, &decltype(events)::value_type::first);
    if (found == events.end())
        return line.problem(fmt::format("has an unknown input \"{}\"", *name));
    auto event =
        TRY(members.required(*name, [&](const JsonValue& value) { return found->second(value, at); }));
    TRY(members.mustHoldNothingElse());
    return TraceLine{at, std::move(event)};
}

/// White space of JSON alone.
bool isBlankLine(std::string_view line)
{
    return line.find_first_not_of(" \t\r") == std::string_view::npos;
}

} // namespace

std::string message(const TraceProblem& problem)
{
    return fmt::format("Line {}: {}", problem.lineNumber, problem.reason);
}

std::expected<std::optional<TraceLine>, TraceProblem> TraceReader::next()
{
    do {
        ++m_lineNumber;
        if (!std::getline(m_stream, m_text)) {
            if (m_stream.bad())
                return std::unexpected(TraceProblem{m_lineNumber, "the trace could not be read"});
            return std::nullopt;
        }
    } while (isBlankLine(m_text) || m_text.starts_with('#'));

    auto line = read();
    if (!line)
        return std::unexpected(TraceProblem{m_lineNumber, std::move(line).error()});
    m_at = line->at;
    if (const auto* input = std::get_if<PipelineInput>(&line->event))
        m_hasStopped = std::holds_alternative<input::Stop>(*input);
    return *std::move(line);
}

std::expected<TraceLine, std::string> TraceReader::read()
{
    m_json.startOver(m_text);
    auto parsed = [&]() -> JsonRead<TraceLine> {
        const auto value = TRY(m_json.value());
        TRY(m_json.end());
        return readLine(value);
    }();
    if (!parsed) {
        const auto& [line, path, reason] = parsed.error();
        return std::unexpected(fmt::format("{} {}", path.empty() ? "the line" : path, reason));
    }
    TRY(checkOrder(*parsed));
    return *std::move(parsed);
}

std::expected<void, std::string> TraceReader::checkOrder(const TraceLine& line) const
{
    const auto* input = std::get_if<PipelineInput>(&line.event);
    const bool isStart = std::holds_alternative<CaptureStart>(line.event);
    if (m_hasStopped)
        return std::unexpected("nothing comes behind a stop");
    if (!m_at && !isStart)
        return std::unexpected("the first line is no start");
    if (m_at && isStart)
        return std::unexpected("there is a second start");
    const bool isClockSet = input && std::holds_alternative<input::ClockSet>(*input);
    if (m_at && line.at < *m_at && !isClockSet)
        return std::unexpected("\"at\" falls, and the clock was not set");
    return {};
}

} // namespace stintbook
