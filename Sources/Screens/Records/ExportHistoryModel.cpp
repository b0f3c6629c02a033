#include "Screens/Records/ExportHistoryModel.h"

#include <QDateTime>
#include <QLocale>
#include <algorithm>
#include <utility>

#include "Base/Try.h"
#include "Export/DurationText.h"
#include "Export/ExportRemarks.h"
#include "Screens/Models/Texts.h"
#include "Screens/Records/Delivering.h"
#include "Screens/Records/RecordsRows.h"

namespace stintbook {

namespace {

QString formatName(ExportFormat format)
{
    switch (format) {
    case ExportFormat::detailedCSV:
        return ExportHistoryModel::tr("Detailed CSV");
    case ExportFormat::summarizedCSV:
        return ExportHistoryModel::tr("Summarized CSV");
    case ExportFormat::timesheetPDF:
        return ExportHistoryModel::tr("Timesheet");
    case ExportFormat::copySummary:
        return ExportHistoryModel::tr("Summary");
    }
    return {};
}

QString periodOf(const ExportSnapshot& snapshot)
{
    const auto first = QLocale().toString(dateOf(snapshot.rangeStart), QLocale::ShortFormat);
    const auto last = QLocale().toString(dateOf(snapshot.rangeEnd), QLocale::ShortFormat);
    return first == last ? first : first + QStringLiteral(" – ") + last;
}

QString momentOf(Instant at, const CalendarContext& calendar)
{
    return QLocale().toString(dateOf(calendar.dateOf(at)), QLocale::ShortFormat) + QStringLiteral(", ")
        + timeOf(at, calendar);
}

ExportRow rowOf(const ExportSnapshot& snapshot, const CalendarContext& calendar, const ExportRegion& region)
{
    const auto document = documentOf(snapshot);
    const auto days = static_cast<int>(snapshot.days.size());
    QStringList whose;
    for (const auto& name : {snapshot.clientFilterName, snapshot.projectFilterName}) {
        if (name)
            whose.append(text(*name));
    }
    return {
        .id = text(snapshot.id.uuid),
        .when = momentOf(snapshot.createdAt, calendar),
        .format = formatName(snapshot.format),
        .period = periodOf(snapshot),
        .whose = whose.isEmpty() ? ExportHistoryModel::tr("All clients") : whose.join(QStringLiteral(" / ")),
        .days = days == 1 ? ExportHistoryModel::tr("1 day") : ExportHistoryModel::tr("%L1 days").arg(days),
        .billed = text(durationText(snapshot.totals.billedSeconds)),
        .amount = text(amountText(snapshot.totals, document.currency, region.moneyLocale)),
        .changedCount = 0};
}

} // namespace

ExportHistoryModel::ExportHistoryModel(const ScreenContext& context,
                                       std::shared_ptr<TimesheetGallery> gallery, QObject* parent)
    : QObject(parent)
    , m_context(context)
    , m_region(exportRegion(processEnvironment()))
    , m_rows({RowModel<ExportRow>::role("exportID", &ExportRow::id),
              RowModel<ExportRow>::role("when", &ExportRow::when),
              RowModel<ExportRow>::role("format", &ExportRow::format),
              RowModel<ExportRow>::role("period", &ExportRow::period),
              RowModel<ExportRow>::role("whose", &ExportRow::whose),
              RowModel<ExportRow>::role("days", &ExportRow::days),
              RowModel<ExportRow>::role("billed", &ExportRow::billed),
              RowModel<ExportRow>::role("amount", &ExportRow::amount),
              RowModel<ExportRow>::role("changedCount", &ExportRow::changedCount)})
    , m_changedDays({RowModel<ChangedDayRow>::role("dayID", &ChangedDayRow::id),
                     RowModel<ChangedDayRow>::role("title", &ChangedDayRow::title)})
    , m_document(std::move(gallery))
{
}

void ExportHistoryModel::setVisible(bool isVisible)
{
    m_isVisible = isVisible;
    if (isVisible && m_isOutdated)
        refresh();
}

void ExportHistoryModel::refresh()
{
    m_isOutdated = !m_isVisible;
    if (!m_isVisible)
        return;
    m_context.readings.ask(
        this,
        [calendar = m_context.calendar(),
         region = m_region](StoreDesk::Workplace& place) -> Stored<std::vector<Listed>> {
            const ExportDesk desk(place.store, calendar);
            std::vector<Listed> listed;
            for (const auto& snapshot : TRY(desk.history())) {
                Listed one{stintbook::rowOf(snapshot, calendar, region), {}};
                for (const auto& day : TRY(desk.changedSince(snapshot)))
                    one.changedDays.push_back(
                        {text(dayID(day)), QLocale().toString(dateOf(day), QLocale::LongFormat)});
                one.row.changedCount = static_cast<int>(one.changedDays.size());
                listed.push_back(std::move(one));
            }
            return listed;
        },
        [this](const Stored<std::vector<Listed>>& listed) {
            if (!listed) {
                setProblem(text(message(listed.error())));
                return;
            }
            m_listed = *listed;
            m_isKnown = true;
            std::vector<ExportRow> rows;
            for (const auto& one : m_listed)
                rows.push_back(one.row);
            m_rows.show(std::move(rows));
            setProblem({});
            showSelected();
        },
        [this](const std::string& problem) { setProblem(text(problem)); });
}

int ExportHistoryModel::rowOf(const QString& id) const
{
    const auto found = std::ranges::find(m_rows.rows(), id, &ExportRow::id);
    return found == m_rows.rows().end() ? -1 : static_cast<int>(found - m_rows.rows().begin());
}

QVariantMap ExportHistoryModel::detail() const
{
    const auto row = rowOf(m_selected);
    return row < 0 ? QVariantMap() : m_rows.values(static_cast<std::size_t>(row));
}

void ExportHistoryModel::select(const QString& id)
{
    m_selected = id;
    setNotice({});
    showSelected();
}

void ExportHistoryModel::step(int rows)
{
    if (m_rows.rows().empty())
        return;
    const auto last = static_cast<int>(m_rows.rows().size()) - 1;
    const int from = rowOf(m_selected);
    const int to = std::clamp(from < 0 ? 0 : from + rows, 0, last);
    select(m_rows.rows()[static_cast<std::size_t>(to)].id);
}

void ExportHistoryModel::showSelected()
{
    const auto row = rowOf(m_selected);
    m_changedDays.show(row < 0 ? std::vector<ChangedDayRow>()
                               : m_listed[static_cast<std::size_t>(row)].changedDays);
    Q_EMIT selectionChanged();
}

void ExportHistoryModel::openDocument()
{
    const auto id = UUID::parse(m_selected.toStdString());
    if (!id)
        return;
    struct Opened {
        ExportSnapshot snapshot;
        DocumentView view;
    };
    using Answer = std::expected<Opened, std::string>;
    const auto request = ++m_request;
    m_context.desk.ask(
        this,
        [id = ExportSnapshotID{*id}, calendar = m_context.calendar(),
         region = m_region](StoreDesk::Workplace& place) -> Answer {
            auto snapshot = ExportDesk(place.store, calendar).snapshot(id);
            if (!snapshot)
                return std::unexpected(message(snapshot.error()));
            auto view = TRY(viewOf(documentOf(*snapshot), region, snapshot->createdAt));
            return Opened{*std::move(snapshot), std::move(view)};
        },
        [this, request](const Answer& opened) {
            if (request != m_request)
                return;
            if (!opened) {
                setNotice(text(opened.error()));
                return;
            }
            m_opened = opened->snapshot;
            m_document.show(opened->view);
        },
        [this, request](const std::string& problem) { tell(request, text(problem)); });
}

void ExportHistoryModel::closeDocument()
{
    ++m_request;
    m_opened.reset();
    m_document.clear();
    setNotice({});
}

void ExportHistoryModel::deliverAgain()
{
    if (!m_opened)
        return;
    if (m_opened->format == ExportFormat::copySummary) {
        deliverBy(clipboardDelivery(), tr("The summary is on the clipboard"));
        return;
    }
    askForFile(
        m_opened->format, suggestedFileName(documentOf(*m_opened)), this,
        [this](const QString& path) {
            deliverBy(fileDelivery(path.toStdString()), tr("Saved as %1").arg(path));
        },
        [] {});
}

void ExportHistoryModel::deliverBy(const ExportDesk::Delivery& delivery, const QString& done)
{
    if (!m_opened)
        return;
    using Delivered = std::expected<void, ExportDeskProblem>;
    m_context.desk.ask(
        this,
        [snapshot = *m_opened, calendar = m_context.calendar(), region = m_region,
         delivery](StoreDesk::Workplace& place) -> Delivered {
            return ExportDesk(place.store, calendar).deliverAgain(snapshot, region, delivery);
        },
        [this, done, request = m_request](const Delivered& result) {
            if (!result)
                tell(request, text(message(result.error())));
            else if (request == m_request)
                setNotice(done);
        },
        [this, request = m_request](const std::string& problem) { tell(request, text(problem)); });
}

/// Beside the document that it is about, or in the list once that is closed.
void ExportHistoryModel::tell(int request, const QString& problem)
{
    if (request == m_request)
        setNotice(problem);
    else
        setProblem(problem);
}

void ExportHistoryModel::setProblem(const QString& problem)
{
    m_problem = problem;
    Q_EMIT changed();
}

void ExportHistoryModel::setNotice(const QString& notice)
{
    if (std::exchange(m_notice, notice) != notice)
        Q_EMIT changed();
}

} // namespace stintbook
