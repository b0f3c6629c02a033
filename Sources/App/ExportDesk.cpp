#include "App/ExportDesk.h"

#include <fmt/format.h>

#include "App/ClientBook.h"
#include "Base/FileReplacement.h"
#include "Base/Try.h"
#include "Export/CSVDocument.h"
#include "Export/SummaryText.h"
#include "Export/Timesheet/TimesheetPDF.h"
#include "Store/PersistentReviewStore.h"

namespace stintbook {

namespace {

std::string sentence(const PersistenceError& error)
{
    return message(error);
}

std::string sentence(const ExportBlocked& blocked)
{
    auto text = message(blocked.block);
    for (const auto& day : blocked.days)
        text += fmt::format("\n{}: {}", dayID(day.day), blockedReason(day));
    return text;
}

std::string sentence(const PreviewOutdated&)
{
    return std::string(previewRebuiltMessage);
}

std::string sentence(const ExportFailure& failure)
{
    return message(failure);
}

std::string sentence(const UnknownSnapshot& unknown)
{
    return fmt::format("No export has the identifier {}.", unknown.id.text());
}

std::string reason(const UnreadableRecord& record)
{
    return message(PersistenceError(record));
}

std::string reason(const StoreFailure& failure)
{
    return failure.reason;
}

std::string reason(const ExportStoreProblem& problem)
{
    return message(problem);
}

template <typename E>
std::expected<std::string, ExportFailure> orNotProduced(std::expected<std::string, E> bytes)
{
    if (!bytes)
        return std::unexpected(DeliveryNotProduced{message(bytes.error())});
    return *std::move(bytes);
}

std::expected<void, ExportFailure> delivered(const std::string& bytes, const ExportDesk::Delivery& delivery)
{
    if (const auto result = delivery(bytes); !result)
        return std::unexpected(DeliveryNotProduced{result.error()});
    return {};
}

} // namespace

std::string blockedReason(const ExportBlockedDay& day)
{
    return day.reason.value_or("This day is not marked ready to bill.");
}

std::string unreviewedNote(std::string_view duration)
{
    return fmt::format("{} of work was recorded after its day was marked ready and is not included.",
                       duration);
}

std::string message(const ExportDeskProblem& problem)
{
    return std::visit([](const auto& which) { return sentence(which); }, problem);
}

ExportDesk::ExportDesk(OpenedStore& store, CalendarContext calendar)
    : m_store(store)
    , m_calendar(std::move(calendar))
{
}

std::expected<ExportPreview, ExportDeskProblem> ExportDesk::preview(const ExportRequest& request) const
{
    return m_store.database().read([&](StoreConnection&) -> std::expected<ExportPreview, ExportDeskProblem> {
        const DayBook book(m_store, m_calendar);
        const auto asked = request.normalised();
        std::vector<ExportDayInput> inputs;
        Seconds unreviewed;
        for (const auto& listed : TRY(book.list(asked.rangeStart, asked.rangeEnd))) {
            if (listed.summary.state == DayReviewState::noActivity && !listed.hasReviewedWork)
                continue;
            auto day = TRY(book.open(listed.summary.day));
            const bool isReady = day.status == ReviewedDayStatus::ready;
            if (isReady)
                unreviewed += day.unreviewedDuration;
            inputs.push_back({.day = listed.summary.day,
                              .revision = std::move(day.revision),
                              .isReady = isReady,
                              .items = day.content().items,
                              .notReadyReason = std::move(day.notReadyReason)});
        }
        const auto directory = TRY(ClientBook(m_store).directory());
        const auto billing = TRY(m_store.review().billing());
        auto document = buildDocument(asked, std::move(inputs), directory, billing);
        return ExportPreview{std::move(document), unreviewed};
    });
}

std::expected<ExportReceipt, ExportDeskProblem> ExportDesk::deliver(const ExportDocumentModel& document,
                                                                    const ExportRegion& region, Instant now,
                                                                    const Delivery& delivery)
{
    if (const auto block = document.block())
        return std::unexpected(ExportBlocked{*block, document.blockedDays});
    const auto current = TRY(preview(document.request));
    if (current.document.days != document.days)
        return std::unexpected(PreviewOutdated{});

    TRY(delivered(TRY(render(document, region, now)), delivery));

    const auto snapshot = snapshotOf(document, ExportSnapshotID::random(), now);
    if (const auto recorded = m_store.review().append(snapshot); !recorded) {
        return std::unexpected(ExportFailure(DeliveredButNotRecorded{
            std::visit([](const auto& problem) { return reason(problem); }, recorded.error())}));
    }
    return receiptFor(snapshot);
}

std::expected<void, ExportDeskProblem> ExportDesk::deliverAgain(const ExportSnapshot& snapshot,
                                                                const ExportRegion& region,
                                                                const Delivery& delivery) const
{
    TRY(delivered(TRY(render(documentOf(snapshot), region, snapshot.createdAt)), delivery));
    return {};
}

Stored<std::vector<ExportSnapshot>> ExportDesk::history() const
{
    return m_store.review().snapshots();
}

std::expected<ExportSnapshot, ExportDeskProblem> ExportDesk::snapshot(ExportSnapshotID id) const
{
    auto found = TRY(m_store.review().snapshot(id));
    if (!found)
        return std::unexpected(UnknownSnapshot{id});
    return *std::move(found);
}

Stored<std::vector<LocalDay>> ExportDesk::changedSince(const ExportSnapshot& snapshot) const
{
    return m_store.database().read([&](StoreConnection&) -> Stored<std::vector<LocalDay>> {
        std::vector<LocalDay> changed;
        for (const auto& exported : snapshot.days) {
            const LocalDay day{exported.dayStart, exported.timeZoneIdentifier};
            if (revision(TRY(m_store.review().items(day))).value != exported.revision)
                changed.push_back(day);
        }
        return changed;
    });
}

std::expected<std::string, ExportFailure> render(const ExportDocumentModel& document,
                                                 const ExportRegion& region, Instant generatedAt)
{
    switch (document.request.format) {
    case ExportFormat::detailedCSV:
    case ExportFormat::summarizedCSV:
        return orNotProduced(csvText(document));
    case ExportFormat::timesheetPDF:
        return orNotProduced(timesheetPDF(document, region, generatedAt));
    case ExportFormat::copySummary:
        return orNotProduced(summaryText(document, region.moneyLocale));
    }
    return {};
}

ExportDesk::Delivery fileDelivery(std::filesystem::path file)
{
    return [file = std::move(file)](const std::string& bytes) -> std::expected<void, std::string> {
        if (const auto replaced = replaceFile(file, bytes, 0666); !replaced)
            return std::unexpected("The export could not be saved: " + replaced.error() + ".");
        return {};
    };
}

} // namespace stintbook
