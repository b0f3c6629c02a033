#include "Screens/Records/RecordsModel.h"

#include <QLocale>
#include <algorithm>
#include <ranges>
#include <utility>

#include "App/BillingDesk.h"
#include "App/ClientBook.h"
#include "Base/Try.h"
#include "Screens/Models/Texts.h"

namespace stintbook {

namespace {

/// Read at a time, so that others who want the store come in between.
constexpr std::size_t daysAtATime = 8;
/// Up to so many days are all read, whether they are seen or not.
constexpr std::size_t daysOfAShortPeriod = 400;

QString titleOf(const RecordRow& row)
{
    return row.isMonth ? QLocale().standaloneMonthName(row.date.month()) + QLatin1Char(' ')
            + QLocale().toString(row.date, QStringLiteral("yyyy"))
                       : QLocale().toString(row.date, QStringLiteral("dddd d"));
}

QString labelOf(RecordsDayState state)
{
    return text(label(state));
}

} // namespace

RecordsModel::RecordsModel(const ScreenContext& context, QObject* parent)
    : QObject(parent)
    , m_context(context)
    , m_filter(context)
    , m_exporting(context, m_gallery)
    , m_history(context, m_gallery)
    // What costs time to write is written for the rows that are seen.
    , m_rows({RowModel<RecordRow>::role("rowID", &RecordRow::id),
              RowModel<RecordRow>::role("isMonth", &RecordRow::isMonth),
              RowModel<RecordRow>::role("isSelected", &RecordRow::isSelected),
              {"title", titleOf},
              {"stateKey",
               [](const RecordRow& row) { return row.state ? text(rawValue(*row.state)) : QString(); }},
              {"stateName", [](const RecordRow& row) { return row.state ? labelOf(*row.state) : QString(); }},
              {"tracked",
               [](const RecordRow& row) {
                   return row.totals ? shortDuration(row.totals->trackedSeconds) : QString();
               }},
              {"billed",
               [](const RecordRow& row) {
                   return row.totals ? shortDuration(row.totals->billedSeconds) : QString();
               }},
              {"amount",
               [this](const RecordRow& row) {
                   return row.totals && m_amounts
                       ? text(m_amounts->text(row.totals->amount, row.totals->unpricedBillableCount))
                       : QString();
               }}})
    , m_lines({RowModel<RecordLineRow>::role("title", &RecordLineRow::title),
               RowModel<RecordLineRow>::role("account", &RecordLineRow::account),
               RowModel<RecordLineRow>::role("clientColor", &RecordLineRow::color),
               RowModel<RecordLineRow>::role("times", &RecordLineRow::times),
               RowModel<RecordLineRow>::role("tracked", &RecordLineRow::tracked),
               RowModel<RecordLineRow>::role("billed", &RecordLineRow::billed),
               RowModel<RecordLineRow>::role("amount", &RecordLineRow::amount),
               RowModel<RecordLineRow>::role("isBillable", &RecordLineRow::isBillable),
               RowModel<RecordLineRow>::role("isReviewed", &RecordLineRow::isReviewed)})
{
    m_showingSoon.setSingleShot(true);
    m_showingSoon.setInterval(120);
    connect(&m_exporting, &ExportModel::delivered, this, &RecordsModel::refresh);
    connect(&m_filter, &RecordsFilter::datesChanged, this, &RecordsModel::readPeriod);
    connect(&m_filter, &RecordsFilter::workChanged, this, [this] {
        showRows();
        keepSelection();
        readDays();
    });
    connect(&m_showingSoon, &QTimer::timeout, this, &RecordsModel::showRows);
}

void RecordsModel::setVisible(bool isVisible)
{
    m_isVisible = isVisible;
    if (isVisible && std::exchange(m_isOutdated, false))
        refresh();
}

void RecordsModel::refresh()
{
    m_history.refresh();
    if (!m_isVisible) {
        m_isOutdated = true;
        return;
    }
    ++m_revision;
    readPeriod();
}

void RecordsModel::readPeriod()
{
    const auto calendar = m_context.calendar();
    const auto range = m_filter.dates();
    m_context.desk.ask(
        this,
        [calendar, range](StoreDesk::Workplace& place) -> Stored<Shown> {
            std::optional<DayRange> days;
            if (range)
                days = daysOf(*range, calendar);
            Shown shown;
            const auto found = TRY(DayBook(place.store, calendar)
                                       .days(days ? std::optional(days->first) : std::nullopt,
                                             days ? std::optional(days->last) : std::nullopt));
            for (const auto& day : std::views::reverse(found)) {
                shown.days.push_back({text(dayID(day)), day, dateOf(day)});
            }
            shown.directory = TRY(ClientBook(place.store).directory());
            shown.currency = TRY(BillingDesk(place.store).settings()).currency;
            return shown;
        },
        [this, range](const Stored<Shown>& shown) {
            if (!shown)
                setProblem(text(message(shown.error())));
            else if (range == m_filter.dates())
                show(std::make_shared<const Shown>(*shown));
        },
        [this](const std::string& problem) { setProblem(text(problem)); });
}

void RecordsModel::show(std::shared_ptr<const Shown> shown)
{
    setProblem({});
    m_shown = std::move(shown);
    m_amounts = std::make_shared<const AmountText>(m_shown->currency, QLocale().name().toStdString());
    m_filter.show(m_shown->directory);
    showRows();
    keepSelection();
    readDays();
}

/// Of what is shown: days, and the months above them.
void RecordsModel::keepSelection()
{
    QStringList ids;
    for (const auto& row : m_rows.rows())
        ids.append(row.id);
    m_selection.keepOnly(ids);
    Q_EMIT selectionChanged();
    showDetail();
}

bool RecordsModel::readsEverything() const
{
    return isFiltered() || m_shown->days.size() <= daysOfAShortPeriod;
}

bool RecordsModel::isCurrent(const QString& dayID) const
{
    const auto found = m_read.find(dayID);
    return found != m_read.end() && found->second.revision == m_revision;
}

std::vector<LocalDay> RecordsModel::wantedDays() const
{
    std::vector<LocalDay> wanted;
    const auto want = [&](auto isWanted) {
        for (const auto& [id, day, date] : m_shown->days) {
            if (wanted.size() == daysAtATime)
                return;
            if (isWanted(id) && !isCurrent(id) && std::ranges::find(wanted, day) == wanted.end())
                wanted.push_back(day);
        }
    };
    want([&](const QString& id) { return m_seen.contains(id); });
    want([&](const QString& id) { return m_selection.contains(id); });
    if (readsEverything())
        want([](const QString&) { return true; });
    return wanted;
}

void RecordsModel::readDays()
{
    if (!m_shown || m_isReading || !m_isVisible)
        return;
    auto wanted = wantedDays();
    if (wanted.empty())
        return;
    m_isReading = true;
    Q_EMIT changed();
    using Records = std::vector<std::pair<QString, DayRecord>>;
    m_context.desk.ask(
        this,
        [calendar = m_context.calendar(),
         wanted = std::move(wanted)](StoreDesk::Workplace& place) -> Stored<Records> {
            const DayBook book(place.store, calendar);
            Records records;
            for (const auto& day : wanted) {
                auto opened = TRY(book.open(day));
                records.emplace_back(text(dayID(day)),
                                     DayRecord{opened.recordsState, std::move(opened.lines)});
            }
            return records;
        },
        [this, revision = m_revision](const Stored<Records>& records) {
            m_isReading = false;
            if (!records) {
                setProblem(text(message(records.error())));
                Q_EMIT changed();
                return;
            }
            for (const auto& [id, record] : *records)
                m_read[id] = {record, revision};
            readDays();
            // The first ones and the last ones at once.
            if (!m_isReading)
                showRows();
            else if (!m_showingSoon.isActive())
                m_showingSoon.start();
        },
        [this](const std::string& problem) {
            m_isReading = false;
            setProblem(text(problem));
            Q_EMIT changed();
        });
}

void RecordsModel::showRows()
{
    if (!m_shown)
        return;
    m_showingSoon.stop();
    std::vector<RecordRow> rows;
    rows.reserve(m_shown->days.size() + m_shown->days.size() / 20);
    // The month above the days that follow it, with their lines.
    std::size_t month = 0;
    std::vector<ReviewedDayLine> linesOfMonth;
    bool isMonthRead = true;
    // Days that may have work of the filter, and are no rows yet.
    std::set<QString> monthsWithUnreadDays;
    const auto finishMonth = [&] {
        if (!rows.empty() && isMonthRead && !monthsWithUnreadDays.contains(rows[month].id))
            rows[month].totals = totals(linesOfMonth);
    };
    for (const auto& day : m_shown->days) {
        RecordRow row{.id = day.id, .isMonth = false, .date = day.date};
        row.isSelected = m_selection.contains(row.id);
        const auto read = m_read.find(row.id);
        if (read == m_read.end() && isFiltered()) {
            monthsWithUnreadDays.insert(monthOf(row.id));
            continue;
        }
        std::vector<ReviewedDayLine> lines;
        if (read != m_read.end()) {
            std::ranges::copy_if(read->second.record.lines, std::back_inserter(lines),
                                 [&](const auto& line) { return m_filter.work().includes(line); });
            if (lines.empty() && isFiltered())
                continue;
            row.state = read->second.record.state;
            row.totals = totals(lines);
        }
        if (rows.empty() || rows[month].id != monthOf(row.id)) {
            finishMonth();
            month = rows.size();
            linesOfMonth.clear();
            isMonthRead = true;
            rows.push_back({.id = monthOf(row.id),
                            .isMonth = true,
                            .date = row.date,
                            .isSelected = false,
                            .state = std::nullopt,
                            .totals = std::nullopt});
        }
        isMonthRead = isMonthRead && row.totals;
        std::ranges::move(lines, std::back_inserter(linesOfMonth));
        rows.push_back(std::move(row));
    }
    finishMonth();
    m_rows.show(std::move(rows));
    m_figures = figures();
    Q_EMIT changed();
    if (m_selection.ids().size() > 1)
        showDetail();
}

QString RecordsModel::figures() const
{
    const bool isWholeFilterRead = !isFiltered()
        || std::ranges::all_of(m_shown->days, [this](const auto& day) { return m_read.contains(day.id); });
    if (!isWholeFilterRead)
        return {};
    const auto list = dayIDs();
    const std::set<QString> ids(list.begin(), list.end());
    const auto days = static_cast<int>(ids.size());
    const auto count = days == 1 ? tr("1 day") : tr("%L1 days").arg(days);
    if (ids.empty() || !isRead(ids))
        return count;
    const auto sums = totals(linesOfDays(ids));
    return tr("%1  ·  %2 tracked  ·  %3 billed  ·  %4")
        .arg(count, shortDuration(sums.trackedSeconds), shortDuration(sums.billedSeconds),
             text(m_amounts->text(sums.amount, sums.unpricedBillableCount)));
}

std::vector<ReviewedDayLine> RecordsModel::linesOfDays(const std::set<QString>& ids) const
{
    std::vector<ReviewedDayLine> lines;
    for (const auto& id : ids) {
        if (const auto read = m_read.find(id); read != m_read.end())
            std::ranges::copy_if(read->second.record.lines, std::back_inserter(lines),
                                 [&](const auto& line) { return m_filter.work().includes(line); });
    }
    return lines;
}

bool RecordsModel::isRead(const std::set<QString>& ids) const
{
    return std::ranges::all_of(ids, [&](const QString& id) { return m_read.contains(id); });
}

QStringList RecordsModel::dayIDs() const
{
    QStringList ids;
    for (const auto& row : m_rows.rows()) {
        if (!row.isMonth)
            ids.append(row.id);
    }
    return ids;
}

QStringList RecordsModel::daysOfMonth(const QString& month) const
{
    QStringList ids;
    for (const auto& row : m_rows.rows()) {
        if (!row.isMonth && monthOf(row.id) == month)
            ids.append(row.id);
    }
    return ids;
}

void RecordsModel::look(int firstRow, int lastRow)
{
    std::set<QString> seen;
    const auto last = std::min<int>(lastRow, static_cast<int>(m_rows.rows().size()) - 1);
    for (int row = std::max(firstRow, 0); row <= last; ++row)
        seen.insert(m_rows.rows()[static_cast<std::size_t>(row)].id);
    if (std::exchange(m_seen, seen) != seen)
        readDays();
}

int RecordsModel::rowOf(const QString& id) const
{
    const auto found = std::ranges::find(m_rows.rows(), id, &RecordRow::id);
    return found == m_rows.rows().end() ? -1 : static_cast<int>(found - m_rows.rows().begin());
}

void RecordsModel::select(const QString& id, const QString& how)
{
    const auto row = rowOf(id);
    if (row < 0)
        return;
    const auto days =
        m_rows.rows()[static_cast<std::size_t>(row)].isMonth ? daysOfMonth(id) : QStringList{id};
    if (how == QLatin1String("keep"))
        m_selection.moveTo(id);
    else if (how == QLatin1String("extend"))
        m_selection.extendTo(days.back(), dayIDs());
    else if (how == QLatin1String("toggle") && days.front() == id)
        m_selection.toggle(id);
    else {
        m_selection.select(days);
        m_selection.moveTo(id);
    }
    showSelection();
}

void RecordsModel::step(int rows, const QString& how)
{
    const auto& all = m_rows.rows();
    if (all.empty())
        return;
    const auto last = static_cast<int>(all.size()) - 1;
    const int from = rowOf(m_selection.current());
    int to = std::clamp(from < 0 ? 0 : from + rows, 0, last);
    // A month is no day: its days are selected on purpose only.
    if (how != QLatin1String("keep") && all[static_cast<std::size_t>(to)].isMonth)
        to = std::clamp(to + (rows < 0 && to > 0 ? -1 : 1), 0, last);
    select(all[static_cast<std::size_t>(to)].id, how);
}

void RecordsModel::selectAll()
{
    m_selection.select(dayIDs());
    showSelection();
}

void RecordsModel::showSelection()
{
    auto rows = m_rows.rows();
    for (auto& row : rows)
        row.isSelected = m_selection.contains(row.id);
    m_rows.show(std::move(rows));
    Q_EMIT selectionChanged();
    showDetail();
    readDays();
}

QVariantMap RecordsModel::figuresOf(const ReviewedWorkTotals& sums) const
{
    return {{"tracked", shortDuration(sums.trackedSeconds)},
            {"billed", shortDuration(sums.billedSeconds)},
            {"amount", text(m_amounts->text(sums.amount, sums.unpricedBillableCount))}};
}

void RecordsModel::showDetail()
{
    if (!m_shown)
        return;
    const auto& ids = m_selection.ids();
    if (ids.size() == 1) {
        const auto day = dayFromID(ids.begin()->toStdString());
        if (!day)
            return;
        m_context.desk.ask(
            this,
            [calendar = m_context.calendar(), day = *day](StoreDesk::Workplace& place) {
                return DayBook(place.store, calendar).open(day);
            },
            [this, id = *ids.begin()](const Stored<OpenedDay>& opened) {
                if (!opened)
                    setProblem(text(message(opened.error())));
                else if (m_selection.ids() == std::set{id})
                    showOpened(*opened);
            },
            [this](const std::string& problem) { setProblem(text(problem)); });
        return;
    }
    m_detail.clear();
    std::vector<RecordLineRow> rows;
    if (!ids.empty()) {
        const auto lines = linesOfDays(ids);
        m_detail = figuresOf(totals(lines));
        m_detail["title"] = tr("%L1 days").arg(ids.size());
        m_detail["isRead"] = isRead(ids);
        rows = accountRows(lines, m_shown->directory, *m_amounts);
    }
    m_lines.show(std::move(rows));
    Q_EMIT detailChanged();
}

void RecordsModel::showOpened(const OpenedDay& day)
{
    const auto calendar =
        CalendarContext::inZone(day.content().day.timeZoneIdentifier).value_or(m_context.calendar());
    std::vector<ReviewedDayLine> lines;
    std::ranges::copy_if(day.lines, std::back_inserter(lines),
                         [&](const auto& line) { return m_filter.work().includes(line); });
    m_detail = figuresOf(totals(lines));
    m_detail["isRead"] = true;
    m_detail["dayID"] = text(dayID(day.content().day));
    m_detail["title"] =
        QLocale().toString(dateOf(calendar.dateOf(day.content().day.start)), QLocale::LongFormat);
    m_detail["state"] = text(rawValue(day.recordsState));
    m_detail["stateName"] = labelOf(day.recordsState);
    m_detail["reason"] = text(day.notReadyReason.value_or(""));
    const bool isReady = day.status == ReviewedDayStatus::ready;
    m_detail["since"] =
        isReady && day.unreviewedDuration > Seconds{0} ? shortDuration(day.unreviewedDuration) : QString();
    m_lines.show(workRows(day, m_filter.work(), m_shown->directory, calendar, *m_amounts));
    Q_EMIT detailChanged();
}

void RecordsModel::setProblem(const QString& problem)
{
    if (std::exchange(m_problem, problem) != problem)
        Q_EMIT problemChanged();
}

} // namespace stintbook
