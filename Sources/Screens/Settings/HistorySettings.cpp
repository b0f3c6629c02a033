#include "Screens/Settings/HistorySettings.h"

#include <QDateTime>
#include <QLocale>
#include <QPointer>
#include <algorithm>
#include <array>

namespace stintbook {

namespace {

constexpr std::array<std::int64_t, 6> offeredDays{30, 90, 180, 365, 730, 0};

QString shownDate(const LocalDay& day, const CalendarContext& calendar)
{
    return QLocale().toString(dateOf(calendar.dateOf(day.start)), QLocale::ShortFormat);
}

std::optional<LocalDay> dayOf(const QString& text, const CalendarContext& calendar)
{
    const auto date = QDate::fromString(text, Qt::ISODate);
    if (!date.isValid())
        return std::nullopt;
    return calendar.dayOn({.year = date.year(), .month = date.month(), .day = date.day()});
}

} // namespace

HistorySettings::HistorySettings(const ScreenContext& context, QObject* parent)
    : QObject(parent)
    , m_context(context)
    , m_windows({RowModel<RetentionRow>::role("choiceID", &RetentionRow::id),
                 RowModel<RetentionRow>::role("name", &RetentionRow::name)})
{
    showWindows();
}

void HistorySettings::showWindows()
{
    std::vector<std::int64_t> days(offeredDays.begin(), offeredDays.end());
    // What was chosen elsewhere stands among them.
    const auto present = m_context.environment.preferences().retentionWindow().dayCount().value_or(0);
    if (std::ranges::find(days, present) == days.end())
        days.insert(std::ranges::upper_bound(days.begin(), days.end() - 1, present), present);
    std::vector<RetentionRow> rows;
    for (const auto count : days) {
        const auto window = RetentionWindow::days(count).value_or(RetentionWindow::keepUntilDeleted());
        auto name = text(label(window));
        name[0] = name[0].toUpper();
        rows.push_back({count, name});
    }
    m_windows.show(std::move(rows));
}

int HistorySettings::window() const
{
    const auto present = m_context.environment.preferences().retentionWindow().dayCount().value_or(0);
    return static_cast<int>(std::ranges::find(m_windows.rows(), present, &RetentionRow::id)
                            - m_windows.rows().begin());
}

bool HistorySettings::cleansAutomatically() const
{
    return m_context.environment.preferences().automaticCleanupEnabled();
}

QString HistorySettings::lastCleanup() const
{
    const auto at = m_context.environment.preferences().lastAutomaticCleanup();
    if (!at)
        return tr("No cleanup yet.");
    const auto calendar = m_context.calendar();
    return tr("Last cleanup: %1, %2")
        .arg(QLocale().toString(dateOf(calendar.dateOf(*at)), QLocale::ShortFormat), timeOf(*at, calendar));
}

void HistorySettings::setCleansAutomatically(bool cleans)
{
    m_context.environment.preferences().setAutomaticCleanupEnabled(cleans);
}

void HistorySettings::environmentChanged()
{
    showWindows();
    Q_EMIT changed();
}

void HistorySettings::chooseWindow(int row)
{
    const auto count = m_windows.rows().at(static_cast<std::size_t>(row)).id;
    const auto chosen = RetentionWindow::days(count).value_or(RetentionWindow::keepUntilDeleted());
    const auto present = m_context.environment.preferences().retentionWindow();
    m_windowProblem.clear();
    m_outcome.clear();
    if (chosen == present)
        return Q_EMIT changed();
    using Answer = std::expected<RetentionChangeRequest, RetentionChangeUnknown>;
    m_context.desk.ask(
        this,
        [present, chosen, calendar = m_context.calendar(),
         now = m_context.clock.now()](StoreDesk::Workplace& place) {
            return retentionChange(place.store.database(), present, chosen, calendar, now);
        },
        [this](const Answer& change) {
            if (!change)
                m_windowProblem = text(message(change.error()));
            else if (change->days.empty())
                return applyChange(*change);
            else
                propose(*change);
            Q_EMIT changed();
        },
        [this](const std::string&) {
            m_windowProblem = text(message(RetentionChangeUnknown{}));
            Q_EMIT changed();
        });
}

void HistorySettings::propose(const RetentionChangeRequest& change)
{
    const auto calendar = m_context.calendar();
    const auto first = shownDate(change.days.front(), calendar);
    const auto last = shownDate(change.days.back(), calendar);
    const auto range = first == last ? first : first + QStringLiteral(" – ") + last;
    const auto asked = confirmation(change, range.toStdString());
    m_change = change;
    m_changeTitle = text(asked.title);
    m_changeText = text(asked.text);
    Q_EMIT changeProposed();
}

void HistorySettings::confirmChange()
{
    if (m_change)
        applyChange(*std::exchange(m_change, std::nullopt));
}

void HistorySettings::cancelChange()
{
    m_change.reset();
    Q_EMIT changed();
}

void HistorySettings::applyChange(const RetentionChangeRequest& change)
{
    begin();
    m_context.environment.changeRetention(
        change,
        [guard = QPointer(this)](const HistoryOutcome& outcome) {
            if (!guard)
                return;
            if (!outcome)
                guard->m_windowProblem = text(message(outcome.error()));
            guard->end(outcome && outcome->dayCount > 0 ? text(removedDays(*outcome)) + u'.' : QString(), {});
        },
        shownProgress());
}

std::optional<ActivityDeletionRequest> HistorySettings::requestOf(const QString& from,
                                                                  const QString& through) const
{
    const auto calendar = m_context.calendar();
    const auto first = dayOf(from, calendar);
    const auto last = dayOf(through, calendar);
    return first && last ? LocalDayRange::between(*first, *last) : std::nullopt;
}

QString HistorySettings::scopeOfRange(const QString& from, const QString& through) const
{
    const auto request = requestOf(from, through);
    return request ? text(confirmation(*request, m_context.calendar()).scope.value_or("")) : QString();
}

QStringList HistorySettings::confirmationOfRange(const QString& from, const QString& through) const
{
    const auto request = requestOf(from, through);
    if (!request)
        return {};
    const auto asked = confirmation(*request, m_context.calendar());
    return {text(asked.title), text(asked.text)};
}

QStringList HistorySettings::confirmationOfAll() const
{
    const auto asked = confirmation(AllHistory{}, m_context.calendar());
    return {text(asked.title), text(asked.text)};
}

void HistorySettings::deleteRange(const QString& from, const QString& through)
{
    if (const auto request = requestOf(from, through))
        remove(*request);
}

void HistorySettings::deleteAll()
{
    remove(AllHistory{});
}

void HistorySettings::remove(const ActivityDeletionRequest& request)
{
    begin();
    m_context.environment.deleteActivity(
        scopeOf(request),
        [guard = QPointer(this), request](const ActivityDeleting::Outcome& outcome) {
            if (!guard)
                return;
            if (!outcome)
                return guard->end({}, text(message(request, outcome.error())));
            guard->end(std::holds_alternative<AllHistory>(request) ? tr("All activity data was deleted.")
                                                                   : tr("The selected history was deleted."),
                       {});
        },
        shownProgress());
}

DeletionProgress HistorySettings::shownProgress()
{
    return [guard = QPointer(this)](double done) {
        if (!guard)
            return;
        guard->m_progress = done;
        Q_EMIT guard->changed();
    };
}

void HistorySettings::begin()
{
    m_isDeleting = true;
    m_progress = 0;
    m_outcome.clear();
    m_deletionProblem.clear();
    Q_EMIT changed();
}

void HistorySettings::end(const QString& outcome, const QString& problem)
{
    m_isDeleting = false;
    m_outcome = outcome;
    m_deletionProblem = problem;
    Q_EMIT changed();
}

void HistorySettings::dismiss()
{
    m_outcome.clear();
    m_deletionProblem.clear();
    m_windowProblem.clear();
    Q_EMIT changed();
}

} // namespace stintbook
