#include <cstdio>
#include <iostream>

#include <fmt/format.h>

#include "App/AppPreferences.h"
#include "App/ClientBook.h"
#include "App/ExportDesk.h"
#include "CommandLine/Arguments.h"
#include "CommandLine/Clipboard.h"
#include "CommandLine/CommandTree.h"
#include "CommandLine/ExportJSON.h"
#include "CommandLine/ExportTables.h"

namespace stintbook {

namespace {

/// What every export asks for.
struct RequestOptions {
    const std::string& from;
    const std::string& to;
    const std::optional<std::string>& mode;
    const std::optional<std::string>& fields;
    const std::optional<std::string>& client;
    const std::optional<std::string>& project;
};

RequestOptions requestOptions(Verb& verb)
{
    return {
        verb.requiredOption("--from", "DAY", "The first day"),
        verb.requiredOption("--to", "DAY", "The last day"),
        verb.choice("--mode", {"detailed", "summarized"}, "A row an item, or a row a group of equal terms"),
        verb.option("--fields", "LIST",
                    "Columns, separated by commas: date, client, project, duration, timeOfDay, "
                    "description, billableState, rateAndAmount"),
        verb.option("--client", "CLIENT", "Only this client's work"),
        verb.option("--project", "PROJECT", "Only this project's work")};
}

struct Requested {
    ExportRequest request;
    CalendarContext calendar;
};

Requested requested(Session& session, const RequestOptions& options, ExportFormatKind kind)
{
    const auto from = dayArgument(options.from, session.calendar(), session.now());
    const auto to = dayArgument(options.to, from.calendar, session.now());
    auto file = session.preferences();
    const AppPreferences preferences(file);

    ExportRequest request;
    request.rangeStart = from.day;
    request.rangeEnd = to.day;
    request.mode = options.mode ? *fromRawValue<ExportMode>(*options.mode) : preferences.defaultExportMode();
    request.format = exportFormat(kind, request.mode);
    request.fields = preferences.exportFields(request.mode);
    if (options.fields) {
        const auto fields = ExportFieldSet::parse(*options.fields);
        if (!fields)
            throw WrongUsage{fmt::format("'{}' is no list of columns.", *options.fields)};
        request.fields = *fields;
    }
    if (options.client || options.project) {
        const auto directory = orRefuse(ClientBook(session.store()).directory());
        if (options.client)
            request.clientFilterID = clientArgument(*options.client, directory);
        if (options.project)
            request.projectFilterID = projectArgument(*options.project, directory, request.clientFilterID);
    }
    return {request, from.calendar};
}

const std::optional<std::string>& paperOption(Verb& verb)
{
    return verb.choice("--paper", {"a4", "usLetter"}, "What it is printed on; the region's unless said");
}

/// The reader's, on the paper that was asked for.
ExportRegion regionFor(const Session& session, const std::optional<std::string>& paper = {})
{
    auto region = exportRegion(session.environment());
    if (paper)
        region.paper = *fromRawValue<TimesheetPaper>(*paper);
    return region;
}

/// Builds the document and delivers it; what is left out is said on stderr.
ExportReceipt deliver(Session& session, const Requested& what, const ExportRegion& region,
                      const ExportDesk::Delivery& delivery)
{
    ExportDesk desk(session.store(), what.calendar);
    const auto preview = orRefuse(desk.preview(what.request));
    const auto receipt = orRefuse(desk.deliver(preview.document, region, session.now(), delivery));
    printRemarks(session, preview);
    return receipt;
}

ExportDesk::Delivery standardOutput(Session& session)
{
    return [&session](const std::string& bytes) -> std::expected<void, std::string> {
        session.output() << bytes << std::flush;
        if (!session.output())
            return std::unexpected("Standard output did not take it.");
        return {};
    };
}

void addCSV(Noun& noun)
{
    auto verb = noun.verb("csv", "Ready work as CSV");
    const auto options = requestOptions(verb);
    const auto& file = verb.option("--output", "FILE", "Where to; standard output unless said otherwise");
    verb.runs([&, options](Session& session) {
        if (session.isJSON() && !file)
            throw WrongUsage{"--json prints the receipt, so the CSV needs --output."};
        const auto what = requested(session, options, ExportFormatKind::csv);
        const auto receipt =
            deliver(session, what, regionFor(session), file ? fileDelivery(*file) : standardOutput(session));
        if (file)
            print(session, receipt);
    });
}

void addPDF(Noun& noun)
{
    auto verb = noun.verb("pdf", "Ready work as a timesheet to print or to send");
    const auto options = requestOptions(verb);
    const auto& file = verb.requiredOption("--output", "FILE", "Where to");
    const auto& paper = paperOption(verb);
    verb.runs([&, options](Session& session) {
        const auto what = requested(session, options, ExportFormatKind::pdf);
        print(session, deliver(session, what, regionFor(session, paper), fileDelivery(file)));
    });
}

void addSummary(Noun& noun)
{
    auto verb = noun.verb("summary", "Ready work as a short text");
    const auto options = requestOptions(verb);
    const auto& toClipboard = verb.flag("--clipboard", "Onto the clipboard instead of standard output");
    verb.runs([&, options](Session& session) {
        if (session.isJSON() && !toClipboard)
            throw WrongUsage{"--json prints the receipt, so the summary needs --clipboard."};
        const auto what = requested(session, options, ExportFormatKind::copySummary);
        const auto receipt =
            deliver(session, what, regionFor(session),
                    toClipboard ? clipboardDelivery(session.environment()) : standardOutput(session));
        if (toClipboard)
            print(session, receipt);
        else
            session.output() << '\n';
    });
}

void addPreview(Noun& noun)
{
    auto verb = noun.verb("preview", "What an export would hold; records nothing");
    const auto options = requestOptions(verb);
    verb.runs([options](Session& session) {
        const auto what = requested(session, options, ExportFormatKind::csv);
        const auto preview = orRefuse(ExportDesk(session.store(), what.calendar).preview(what.request));
        if (session.isJSON())
            session.printJSON([&](JsonWriter& json) { writeMembers(json, preview); });
        else
            printPreview(session, what.calendar, preview);
    });
}

void addShow(Noun& noun)
{
    auto verb = noun.verb("show", "A delivered export as it was");
    const auto& id = verb.argument("ID", "The export");
    const auto& file = verb.option("--output", "FILE", "Write it to a file again, in its format");
    const auto& paper = paperOption(verb);
    verb.runs([&](Session& session) {
        const ExportSnapshotID snapshotID{identifierArgument(id)};
        const ExportDesk desk(session.store(), session.calendar());
        const auto snapshot = orRefuse(desk.snapshot(snapshotID));
        if (file)
            orRefuse(desk.deliverAgain(snapshot, regionFor(session, paper), fileDelivery(*file)));
        else if (paper)
            throw WrongUsage{"--paper needs --output."};
        if (session.isJSON())
            session.printJSON([&](JsonWriter& json) { writeSnapshots(json, {snapshot}); });
        else if (!file)
            printSnapshot(session, snapshot);
    });
}

} // namespace

void addExportCommands(CommandTree& tree)
{
    auto noun = tree.noun("export", "Bill ready work");
    addCSV(noun);
    addPDF(noun);
    addSummary(noun);
    addPreview(noun);

    auto history = noun.verb("history", "Every delivered export, newest first");
    history.runs([](Session& session) {
        const auto snapshots = orRefuse(ExportDesk(session.store(), session.calendar()).history());
        if (session.isJSON())
            session.printJSON([&](JsonWriter& json) { writeSnapshots(json, snapshots); });
        else
            printHistory(session, snapshots);
    });

    addShow(noun);
}

} // namespace stintbook
