#include "Screens/Records/ExportModel.h"

#include <QDesktopServices>
#include <QFileInfo>
#include <QLocale>
#include <QUrl>
#include <algorithm>
#include <array>
#include <utility>

#include "Base/Try.h"
#include "Export/DurationText.h"
#include "Export/ExportRemarks.h"
#include "Screens/Models/Texts.h"
#include "Screens/Records/Delivering.h"
#include "Screens/Records/RecordsRows.h"

namespace stintbook {

namespace {

constexpr std::array kinds{
    std::pair{ExportFormatKind::csv, "csv"},
    std::pair{ExportFormatKind::pdf, "pdf"},
    std::pair{ExportFormatKind::copySummary, "copySummary"},
};

QString nameOf(std::string_view token)
{
    if (token == "client")
        return ExportModel::tr("Client");
    if (token == "project")
        return ExportModel::tr("Project");
    if (token == "timeOfDay")
        return ExportModel::tr("Time of day");
    if (token == "description")
        return ExportModel::tr("Description");
    if (token == "billableState")
        return ExportModel::tr("Billable or not");
    return ExportModel::tr("Rate and amount");
}

/// Absent when nothing was recorded yet.
Stored<std::optional<DayRange>> rangeOf(const DayBook& book, const std::optional<DateRange>& dates)
{
    if (dates)
        return daysOf(*dates, book.calendar());
    const auto days = TRY(book.days(std::nullopt, std::nullopt));
    return days.empty() ? std::nullopt : std::optional(DayRange{days.front(), days.back()});
}

} // namespace

ExportModel::ExportModel(const ScreenContext& context, std::shared_ptr<TimesheetGallery> gallery,
                         QObject* parent)
    : QObject(parent)
    , m_context(context)
    , m_region(exportRegion(processEnvironment()))
    , m_filter(context)
    , m_fields({RowModel<FieldRow>::role("token", &FieldRow::id),
                RowModel<FieldRow>::role("name", &FieldRow::name),
                RowModel<FieldRow>::role("isOn", &FieldRow::isOn)})
    , m_blockedDays({RowModel<BlockedDayRow>::role("dayID", &BlockedDayRow::id),
                     RowModel<BlockedDayRow>::role("title", &BlockedDayRow::title),
                     RowModel<BlockedDayRow>::role("reason", &BlockedDayRow::reason)})
    , m_document(std::move(gallery))
{
    connect(&m_filter, &RecordsFilter::datesChanged, this, &ExportModel::build);
    connect(&m_filter, &RecordsFilter::workChanged, this, &ExportModel::build);
}

QString ExportModel::step() const
{
    if (std::holds_alternative<ExportReceipt>(m_step))
        return QStringLiteral("complete");
    if (std::holds_alternative<ExportFailure>(m_step))
        return QStringLiteral("failed");
    return std::holds_alternative<ExportPreviewing>(m_step) ? QStringLiteral("preview")
                                                            : QStringLiteral("configure");
}

bool ExportModel::canDeliver() const
{
    return std::holds_alternative<ExportPreviewing>(m_step) && !isBusy() && m_built
        && !m_built->preview.document.block();
}

void ExportModel::begin(RecordsFilter* looked)
{
    m_isOpen = true;
    m_filter.adopt(*looked);
    m_mode = m_context.environment.preferences().defaultExportMode();
    m_chosenFields = m_context.environment.preferences().exportFields(m_mode);
    build();
}

void ExportModel::end()
{
    m_isOpen = false;
    ++m_revision;
    forgetDocument();
    m_step = ExportConfiguring{};
    Q_EMIT changed();
}

void ExportModel::setMode(const QString& mode)
{
    const auto chosen = fromRawValue<ExportMode>(mode.toStdString());
    if (!chosen || *chosen == m_mode)
        return;
    m_mode = *chosen;
    m_context.environment.preferences().setDefaultExportMode(m_mode);
    m_chosenFields = m_context.environment.preferences().exportFields(m_mode);
    build();
}

QString ExportModel::kind() const
{
    return QString::fromLatin1(
        std::ranges::find(kinds, m_kind, &std::pair<ExportFormatKind, const char*>::first)->second);
}

void ExportModel::setKind(const QString& kind)
{
    for (const auto& [value, name] : kinds) {
        if (kind == QLatin1String(name) && std::exchange(m_kind, value) != value)
            build();
    }
}

void ExportModel::setField(const QString& token, bool isOn)
{
    const auto field = std::ranges::find(exportFieldTokens, token.toStdString(), &ExportFieldToken::token);
    if (field == exportFieldTokens.end() || m_chosenFields.*(field->field) == isOn)
        return;
    m_chosenFields.*(field->field) = isOn;
    m_context.environment.preferences().setExportFields(m_mode, m_chosenFields);
    build();
}

void ExportModel::showFields()
{
    std::vector<FieldRow> rows;
    for (const auto& [token, field] : choosableFields(format()))
        rows.push_back({text(token), nameOf(token), m_chosenFields.*field});
    m_fields.show(std::move(rows));
}

QStringList ExportModel::formatNotes() const
{
    QStringList notes;
    for (const auto note : fieldsSetByFormat)
        notes.append(text(note));
    return notes;
}

void ExportModel::build()
{
    if (!m_isOpen)
        return;
    showFields();
    m_notice.clear();
    m_isBuilding = true;
    m_step = ExportConfiguring{};
    const auto revision = ++m_revision;
    Q_EMIT changed();
    ExportRequest request;
    request.clientFilterID = m_filter.work().clientID;
    request.projectFilterID = m_filter.work().projectID;
    request.mode = m_mode;
    request.format = format();
    request.fields = m_chosenFields;
    using Answer = std::expected<std::shared_ptr<const Built>, std::string>;
    m_context.desk.ask(
        this,
        [request, dates = m_filter.dates(), calendar = m_context.calendar(), now = m_context.clock.now(),
         region = m_region](StoreDesk::Workplace& place) mutable -> Answer {
            const DayBook book(place.store, calendar);
            const auto range = rangeOf(book, dates);
            if (!range)
                return std::unexpected(message(range.error()));
            const auto today = calendar.dayOf(now);
            request.rangeStart = *range ? (*range)->first : today;
            request.rangeEnd = *range ? (*range)->last : today;
            auto preview = ExportDesk(place.store, calendar).preview(request);
            if (!preview)
                return std::unexpected(message(preview.error()));
            auto view = viewOf(preview->document, region, now);
            if (!view)
                return std::unexpected(std::move(view).error());
            return std::make_shared<const Built>(*std::move(preview), *std::move(view));
        },
        [this, revision](const Answer& answer) {
            if (revision != m_revision)
                return;
            if (answer) {
                show(*answer);
            } else {
                forgetDocument();
                refuse(text(answer.error()));
            }
        },
        [this, revision](const std::string& problem) {
            if (revision != m_revision)
                return;
            forgetDocument();
            refuse(text(problem));
        });
}

void ExportModel::show(std::shared_ptr<const Built> built)
{
    m_built = std::move(built);
    m_isBuilding = false;
    m_step = ExportPreviewing{};
    m_document.show(m_built->view);
    std::vector<BlockedDayRow> blocked;
    for (const auto& day : m_built->preview.document.blockedDays)
        blocked.push_back({text(dayID(day.day)), QLocale().toString(dateOf(day.day), QLocale::LongFormat),
                           text(blockedReason(day))});
    m_blockedDays.show(std::move(blocked));
    Q_EMIT changed();
}

/// It is not what was chosen last.
void ExportModel::forgetDocument()
{
    m_built.reset();
    m_document.clear();
    m_blockedDays.show({});
}

void ExportModel::refuse(const QString& notice)
{
    m_isBuilding = false;
    m_isDelivering = false;
    m_notice = notice;
    Q_EMIT changed();
}

QString ExportModel::figures() const
{
    if (!m_built || m_built->preview.document.block())
        return {};
    const auto& document = m_built->preview.document;
    const auto days = static_cast<int>(document.days.size());
    return tr("%1  ·  %2 billed  ·  %3")
        .arg(days == 1 ? tr("1 day") : tr("%L1 days").arg(days),
             text(durationText(document.totals.billedSeconds)),
             text(amountText(document.totals, document.currency, m_region.moneyLocale)));
}

QString ExportModel::block() const
{
    const auto block = m_built ? m_built->preview.document.block() : std::nullopt;
    return block ? text(message(*block)) : QString();
}

QString ExportModel::blockedHeading() const
{
    return m_built && !m_built->preview.document.blockedDays.empty()
        ? text(stintbook::blockedDaysHeading(m_built->preview.document.blockedDays))
        : QString();
}

QString ExportModel::unreviewed() const
{
    return m_built && m_built->preview.unreviewedDuration > Seconds{0}
        ? text(unreviewedNote(shortDuration(m_built->preview.unreviewedDuration).toStdString()))
        : QString();
}

void ExportModel::deliver()
{
    if (!canDeliver())
        return;
    m_notice.clear();
    m_isDelivering = true;
    Q_EMIT changed();
    if (m_kind == ExportFormatKind::copySummary) {
        deliverBy(clipboardDelivery(), {});
        return;
    }
    askForFile(
        format(), suggestedFileName(m_built->preview.document), this,
        [this](const QString& path) { deliverBy(fileDelivery(path.toStdString()), path); },
        [this] {
            m_isDelivering = false;
            Q_EMIT changed();
        });
}

void ExportModel::deliverBy(const ExportDesk::Delivery& delivery, const QString& file)
{
    using Delivered = std::expected<ExportReceipt, ExportDeskProblem>;
    m_context.desk.ask(
        this,
        [built = m_built, calendar = m_context.calendar(), region = m_region, now = m_context.clock.now(),
         delivery](StoreDesk::Workplace& place) -> Delivered {
            return ExportDesk(place.store, calendar).deliver(built->preview.document, region, now, delivery);
        },
        [this, file](const Delivered& result) {
            m_isDelivering = false;
            if (result)
                tell(*result, file);
            else
                tell(result.error());
            Q_EMIT changed();
        },
        [this](const std::string& problem) { refuse(text(problem)); });
}

void ExportModel::tell(const ExportReceipt& receipt, const QString& file)
{
    m_step = receipt;
    m_deliveredFile = file;
    m_resultTitle = file.isEmpty() ? tr("The summary is on the clipboard") : tr("The export is saved");
    const auto what = tr("%1 of %2")
                          .arg(receipt.lineCount == 1 ? tr("1 line") : tr("%L1 lines").arg(receipt.lineCount),
                               receipt.dayCount == 1 ? tr("1 day") : tr("%L1 days").arg(receipt.dayCount));
    m_resultText = file.isEmpty() ? what : what + QLatin1Char('\n') + file;
    Q_EMIT delivered();
}

void ExportModel::tell(const ExportDeskProblem& problem)
{
    if (const auto* failure = std::get_if<ExportFailure>(&problem)) {
        m_step = *failure;
        m_resultTitle = text(title(*failure, format()));
        m_resultText = text(message(*failure));
        return;
    }
    if (std::holds_alternative<PreviewOutdated>(problem) || std::holds_alternative<ExportBlocked>(problem))
        build();
    m_notice = text(message(problem));
}

void ExportModel::backToPreview()
{
    build();
}

void ExportModel::dismissNotice()
{
    m_notice.clear();
    Q_EMIT changed();
}

void ExportModel::showInFolder()
{
    openWithDesktop(QFileInfo(m_deliveredFile).absolutePath());
}

void ExportModel::openWithDesktop(const QString& path)
{
    if (QDesktopServices::openUrl(QUrl::fromLocalFile(path)))
        return;
    m_resultText = m_deliveredFile + QLatin1Char('\n') + tr("Nothing on this desktop opens it.");
    Q_EMIT changed();
}

} // namespace stintbook
