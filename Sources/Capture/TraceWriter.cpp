#include "Capture/TraceWriter.h"

#include <string_view>

#include "Base/Json.h"

namespace stintbook {

namespace {

template <typename Fill> void object(JsonWriter& json, std::string_view name, Fill fill)
{
    json.key(name);
    json.object(fill);
}

void empty(JsonWriter& json, std::string_view name)
{
    object(json, name, [] { });
}

void write(JsonWriter& json, const input::Frontmost& frontmost)
{
    object(json, "frontmost", [&] {
        json.member("bundleIdentifier", frontmost.snapshot.identity.bundleIdentifier);
        json.member("displayName", frontmost.snapshot.identity.displayName);
        json.member("processIdentifier", frontmost.snapshot.processIdentifier);
        // The kinds' names are the keys.
        if (!frontmost.focused.isNone())
            json.member(rawValue(frontmost.focused.kind), frontmost.focused.text);
    });
}

void write(JsonWriter& json, const input::Boundary& boundary)
{
    if (const auto* suspended = std::get_if<ActivitySuspended>(&boundary.boundary))
        json.member("suspended", rawValue(suspended->reason));
    else
        json.member("resumed", rawValue(std::get<ActivityResumed>(boundary.boundary).cause));
}

void write(JsonWriter& json, const input::IdleSample& sample)
{
    object(json, "idleSample", [&] {
        json.member("awakeSeconds", sample.awake);
        json.member("idleSeconds", sample.idle);
    });
}

void write(JsonWriter& json, const input::NoObservation& noObservation)
{
    object(json, "noObservation", [&] { json.member("since", noObservation.since); });
}

void write(JsonWriter& json, const input::Pause& pause)
{
    object(json, "pause", [&] { json.member("until", pause.until); });
}

void write(JsonWriter& json, const input::Resume& /*resume*/)
{
    empty(json, "resume");
}

void write(JsonWriter& json, const input::PermissionChanged& change)
{
    json.member("permission", rawValue(change.permission));
}

void write(JsonWriter& json, const input::CalendarContextChanged& change)
{
    json.member("timeZone", change.calendar.timeZoneIdentifier());
}

void write(JsonWriter& json, const input::BrowserDomainPolled& poll)
{
    object(json, "browserDomain", [&] {
        json.member("browser", poll.browserBundleIdentifier);
        if (poll.reading.kind == BrowserDomainReading::Kind::failed)
            json.member("code", poll.reading.errorNumber);
        if (poll.reading.domain)
            json.member("host", poll.reading.domain->host());
        json.member("reading", rawValue(poll.reading.kind));
    });
}

void write(JsonWriter& json, const input::TitleContextRetained& preference)
{
    json.member("retainsTitleContext", preference.isRetained);
}

void write(JsonWriter& json, const input::BrowserContextEnabled& preference)
{
    json.member("browserContextEnabled", preference.isEnabled);
}

void write(JsonWriter& json, const input::ClockSet& change)
{
    object(json, "clockSet", [&] { json.member("from", change.from); });
}

void write(JsonWriter& json, const input::ResolveForDeletion& /*deletion*/)
{
    empty(json, "hold");
}

void write(JsonWriter& json, const input::ReleaseAfterDeletion& /*deletion*/)
{
    empty(json, "release");
}

void write(JsonWriter& json, const input::Stop& /*stop*/)
{
    empty(json, "stop");
}

} // namespace

template <typename Fill> void TraceWriter::line(Instant at, Fill fill)
{
    m_text.clear();
    {
        JsonWriter json(m_text);
        json.object([&] {
            json.member("at", at);
            fill(json);
        });
    }
    m_text.push_back('\n');
    m_stream << m_text << std::flush;
}

void TraceWriter::write(const CaptureStart& start)
{
    line(start.at, [&](JsonWriter& json) {
        object(json, "start", [&] {
            json.member("browserContextEnabled", start.browserContextEnabled);
            json.member("permission", rawValue(start.permission));
            json.member("retainsTitleContext", start.retainsTitleContext);
            json.member("timeZone", start.calendar.timeZoneIdentifier());
        });
    });
}

void TraceWriter::write(const PipelineInput& input)
{
    std::visit(
        [&]<typename Input>(const Input& alternative) {
            if constexpr (!std::is_same_v<Input, input::CoordinationPoint>)
                line(alternative.at, [&](JsonWriter& json) { stintbook::write(json, alternative); });
        },
        input);
}

} // namespace stintbook
