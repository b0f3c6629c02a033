#include "Capture/TraceReader.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <initializer_list>
#include <string_view>
#include <utility>

#include <fmt/format.h>

#include "Base/Json.h"
#include "Base/Try.h"

namespace stintbook {

namespace {

template <typename T> using Read = std::expected<T, std::string>;
using Value = rapidjson::Value;
using Event = decltype(TraceLine::event);

std::string_view textOf(const Value& value)
{
    return {value.GetString(), value.GetStringLength()};
}

/// The members of one object, which holds no others than the given ones, and none twice.
class Members {
public:
    static Read<Members> of(const Value& object, std::string_view name,
                            std::initializer_list<std::string_view> known)
    {
        if (!object.IsObject())
            return std::unexpected(fmt::format("\"{}\" is no object", name));
        for (auto member = object.MemberBegin(); member != object.MemberEnd(); ++member) {
            const auto key = textOf(member->name);
            if (std::ranges::find(known, key) == known.end())
                return std::unexpected(fmt::format("\"{}\" has an unknown key \"{}\"", name, key));
            if (object.FindMember(member->name) != member)
                return std::unexpected(fmt::format("\"{}\" holds \"{}\" twice", name, key));
        }
        return Members(object);
    }

    /// Null when absent.
    const Value* find(std::string_view key) const
    {
        const auto found =
            m_object->FindMember(Value(key.data(), static_cast<rapidjson::SizeType>(key.size())));
        return found == m_object->MemberEnd() ? nullptr : &found->value;
    }

    /// Reads a member that must be there.
    template <typename T>
    Read<T> required(std::string_view key, Read<T> (*read)(const Value&, std::string_view)) const
    {
        const auto* value = find(key);
        if (!value)
            return std::unexpected(fmt::format("\"{}\" is missing", key));
        return read(*value, key);
    }

    template <typename T>
    Read<std::optional<T>> optional(std::string_view key,
                                    Read<T> (*read)(const Value&, std::string_view)) const
    {
        const auto* value = find(key);
        if (!value)
            return std::nullopt;
        return TRY(read(*value, key));
    }

private:
    explicit Members(const Value& object)
        : m_object(&object)
    {
    }

    const Value* m_object;
};

Read<double> number(const Value& value, std::string_view key)
{
    if (!value.IsNumber())
        return std::unexpected(fmt::format("\"{}\" is no number", key));
    return value.GetDouble();
}

/// The years that a calendar date can name.
constexpr Instant yearOne{-62'135'596'800.0};
constexpr Instant yearTenThousand{253'402'300'800.0};

Read<Instant> instant(const Value& value, std::string_view key)
{
    const Instant at{TRY(number(value, key))};
    if (at < yearOne || at >= yearTenThousand)
        return std::unexpected(fmt::format("\"{}\" lies outside the years 1 to 9999", key));
    return at;
}

Read<std::int32_t> integer(const Value& value, std::string_view key)
{
    if (!value.IsInt())
        return std::unexpected(fmt::format("\"{}\" is no whole number of 32 bits", key));
    return value.GetInt();
}

Read<bool> flag(const Value& value, std::string_view key)
{
    if (!value.IsBool())
        return std::unexpected(fmt::format("\"{}\" is neither true nor false", key));
    return value.GetBool();
}

Read<std::string> text(const Value& value, std::string_view key)
{
    if (!value.IsString())
        return std::unexpected(fmt::format("\"{}\" is no text", key));
    return std::string(textOf(value));
}

std::unexpected<std::string> unknownValue(std::string_view key, std::string_view value)
{
    return std::unexpected(fmt::format("\"{}\" cannot be \"{}\"", key, value));
}

template <typename E> Read<E> enumerator(const Value& value, std::string_view key)
{
    const auto name = TRY(text(value, key));
    if (const auto found = fromRawValue<E>(name))
        return *found;
    return unknownValue(key, name);
}

Read<CalendarContext> zone(const Value& value, std::string_view key)
{
    const auto identifier = TRY(text(value, key));
    if (auto calendar = CalendarContext::inZone(identifier))
        return *std::move(calendar);
    return std::unexpected(fmt::format("\"{}\" names no known zone: \"{}\"", key, identifier));
}

Read<Event> start(const Value& value, std::string_view key, Instant at)
{
    const auto members = TRY(
        Members::of(value, key, {"timeZone", "retainsTitleContext", "browserContextEnabled", "permission"}));
    auto calendar = TRY(members.required("timeZone", zone));
    const auto permission = TRY(members.optional("permission", enumerator<CapturePermissionState>));
    const auto retainsTitleContext = TRY(members.optional("retainsTitleContext", flag));
    const auto browserContextEnabled = TRY(members.optional("browserContextEnabled", flag));
    return CaptureStart{.at = at,
                        .calendar = std::move(calendar),
                        .permission = permission.value_or(CapturePermissionState::granted),
                        .retainsTitleContext = retainsTitleContext.value_or(true),
                        .browserContextEnabled = browserContextEnabled.value_or(false)};
}

Read<Event> frontmost(const Value& value, std::string_view key, Instant at)
{
    const auto members = TRY(Members::of(
        value, key,
        {"bundleIdentifier", "displayName", "processIdentifier", "windowTitle", "documentTitle"}));
    input::Frontmost frontmost{.at = at};
    frontmost.snapshot.observedAt = at;
    frontmost.snapshot.identity.bundleIdentifier = TRY(members.required("bundleIdentifier", text));
    if (frontmost.snapshot.identity.bundleIdentifier.empty())
        return unknownValue("bundleIdentifier", "");
    frontmost.snapshot.identity.displayName = TRY(members.required("displayName", text));
    frontmost.snapshot.processIdentifier = TRY(members.optional("processIdentifier", integer)).value_or(0);

    // An empty title says no more than none; the document counts before the window.
    auto windowTitle = TRY(members.optional("windowTitle", text)).value_or("");
    auto documentTitle = TRY(members.optional("documentTitle", text)).value_or("");
    if (!documentTitle.empty())
        frontmost.focused = FocusedContext::documentTitle(std::move(documentTitle));
    else if (!windowTitle.empty())
        frontmost.focused = FocusedContext::windowTitle(std::move(windowTitle));
    return PipelineInput(std::move(frontmost));
}

Read<Event> browserDomain(const Value& value, std::string_view key, Instant at)
{
    using Kind = BrowserDomainReading::Kind;
    /// What a failure without a number of its own counts as: an event that nobody handled.
    constexpr std::int32_t unknownFailure = -1708;

    const auto members = TRY(Members::of(value, key, {"reading", "host", "code", "browser"}));
    input::BrowserDomainPolled poll{.at = at};
    poll.browserBundleIdentifier = TRY(members.required("browser", text));
    poll.reading.kind = TRY(members.required("reading", enumerator<Kind>));
    if (members.find("host") && poll.reading.kind != Kind::domain)
        return std::unexpected("\"host\" belongs to the reading \"domain\" alone");
    if (members.find("code") && poll.reading.kind != Kind::failed)
        return std::unexpected("\"code\" belongs to the reading \"failed\" alone");

    if (poll.reading.kind == Kind::failed)
        poll.reading.errorNumber = TRY(members.optional("code", integer)).value_or(unknownFailure);
    if (poll.reading.kind == Kind::domain) {
        poll.reading.domain = BrowserDomain::fromText(TRY(members.required("host", text)));
        if (!poll.reading.domain)
            poll.reading.kind = Kind::pageHasNoWebDomain;
    }
    return PipelineInput(std::move(poll));
}

Read<Event> idleSample(const Value& value, std::string_view key, Instant at)
{
    const auto members = TRY(Members::of(value, key, {"idleSeconds", "awakeSeconds"}));
    const auto idle = TRY(members.required("idleSeconds", number));
    if (idle < 0)
        return std::unexpected("\"idleSeconds\" is negative");
    if (at - Seconds{idle} < yearOne)
        return std::unexpected("\"idleSeconds\" reaches back before the year 1");
    return PipelineInput(input::IdleSample{{idle}, {TRY(members.required("awakeSeconds", number))}, at});
}

Read<Event> noObservation(const Value& value, std::string_view key, Instant at)
{
    const auto members = TRY(Members::of(value, key, {"since"}));
    const auto since = TRY(members.required("since", instant));
    if (at < since)
        return std::unexpected("\"since\" lies after \"at\"");
    return PipelineInput(input::NoObservation{since, at});
}

Read<Event> suspended(const Value& value, std::string_view key, Instant at)
{
    const auto reason = TRY(enumerator<GapReason>(value, key));
    if (reason != GapReason::systemSleep && reason != GapReason::sessionInactive)
        return unknownValue(key, rawValue(reason));
    return PipelineInput(input::Boundary{ActivitySuspended{reason, at}, at});
}

Read<Event> resumed(const Value& value, std::string_view key, Instant at)
{
    const auto cause = TRY(enumerator<SystemResumeCause>(value, key));
    return PipelineInput(input::Boundary{ActivityResumed{cause, at}, at});
}

Read<Event> pause(const Value& value, std::string_view key, Instant at)
{
    const auto members = TRY(Members::of(value, key, {"until"}));
    const auto until = TRY(members.optional("until", instant));
    return PipelineInput(input::Pause{until, until ? *until - at : Seconds{}, at});
}

Read<Event> permission(const Value& value, std::string_view key, Instant at)
{
    return PipelineInput(input::PermissionChanged{TRY(enumerator<CapturePermissionState>(value, key)), at});
}

Read<Event> timeZone(const Value& value, std::string_view key, Instant at)
{
    return PipelineInput(input::CalendarContextChanged{TRY(zone(value, key)), at});
}

Read<Event> retainsTitleContext(const Value& value, std::string_view key, Instant at)
{
    return PipelineInput(input::TitleContextRetained{TRY(flag(value, key)), at});
}

Read<Event> browserContextEnabled(const Value& value, std::string_view key, Instant at)
{
    return PipelineInput(input::BrowserContextEnabled{TRY(flag(value, key)), at});
}

Read<Event> store(const Value& value, std::string_view key, Instant /*at*/)
{
    const auto what = TRY(text(value, key));
    if (what != "refuse" && what != "accept")
        return unknownValue(key, what);
    return TraceStoreSwitch{what == "refuse"};
}

Read<Event> clockSet(const Value& value, std::string_view key, Instant at)
{
    const auto members = TRY(Members::of(value, key, {"from"}));
    return PipelineInput(input::ClockSet{TRY(members.required("from", instant)), at});
}

/// An input that says no more than its name.
template <typename MakeInput> Read<Event> bare(const Value& value, std::string_view key, MakeInput makeInput)
{
    TRY(Members::of(value, key, {}));
    return PipelineInput(makeInput());
}

Read<Event> resume(const Value& value, std::string_view key, Instant at)
{
    return bare(value, key, [&] { return input::Resume{at}; });
}

Read<Event> hold(const Value& value, std::string_view key, Instant at)
{
    return bare(value, key,
                [&] { return input::ResolveForDeletion{[](CaptureWriterBarrierOutcome) { }, at}; });
}

Read<Event> release(const Value& value, std::string_view key, Instant at)
{
    return bare(value, key, [&] { return input::ReleaseAfterDeletion{[] { }, at}; });
}

Read<Event> stop(const Value& value, std::string_view key, Instant at)
{
    return bare(value, key, [&] { return input::Stop{at}; });
}

using ReadEvent = Read<Event> (*)(const Value&, std::string_view, Instant);

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

Read<TraceLine> readLine(const Value& line)
{
    if (!line.IsObject())
        return std::unexpected("a line is one object");
    const Value* at = nullptr;
    const Value* event = nullptr;
    std::string_view name;
    for (const auto& member : line.GetObject()) {
        const auto key = textOf(member.name);
        auto& slot = key == "at" ? at : event;
        if (slot)
            return std::unexpected(key == "at" ? "\"at\" stands there twice"
                                               : fmt::format("\"{}\" and \"{}\" are two inputs", name, key));
        slot = &member.value;
        if (key != "at")
            name = key;
    }
    if (!at)
        return std::unexpected("\"at\" is missing");
    if (!event)
        return std::unexpected("there is no input beside \"at\"");

    const auto found = std::ranges::find(events, name, &decltype(events)::value_type::first);
    if (found == events.end())
        return std::unexpected(fmt::format("\"{}\" is no input", name));
    const auto instantOfLine = TRY(instant(*at, "at"));
    return TraceLine{instantOfLine, TRY(found->second(*event, name, instantOfLine))};
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

std::expected<TraceLine, std::string> TraceReader::read() const
{
    // The parser takes a zero byte for the end.
    if (m_text.find('\0') != std::string::npos)
        return std::unexpected("a zero byte is no JSON");
    const auto document = TRY(parseJson(m_text));
    auto line = TRY(readLine(document));
    TRY(checkOrder(line));
    return line;
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
