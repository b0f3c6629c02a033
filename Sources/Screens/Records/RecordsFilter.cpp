#include "Screens/Records/RecordsFilter.h"

#include <QLocale>
#include <algorithm>
#include <utility>

#include "Screens/Models/Texts.h"

namespace stintbook {

namespace {

QString written(CivilDate date)
{
    return QLocale().toString(dateOf(date), QLocale::ShortFormat);
}

std::optional<CivilDate> dateIn(const QString& words)
{
    auto date = QDate::fromString(words, Qt::ISODate);
    if (!date.isValid()) {
        date = QLocale().toDate(words, QLocale::ShortFormat);
        // Where the locale writes two digits of a year, they are read as of the last century, in which nobody recorded.
        if (date.isValid() && date.year() < 2000)
            date = date.addYears(100);
    }
    if (!date.isValid())
        return std::nullopt;
    return CivilDate{date.year(), date.month(), date.day()};
}

template <typename ID> std::optional<ID> identifierIn(const QString& words)
{
    const auto id = UUID::parse(words.toStdString());
    return id ? std::optional(ID{*id}) : std::nullopt;
}

} // namespace

RecordsFilter::RecordsFilter(const ScreenContext& context, QObject* parent)
    : QObject(parent)
    , m_context(context)
    , m_clients({RowModel<FilterRow>::role("choiceID", &FilterRow::id),
                 RowModel<FilterRow>::role("name", &FilterRow::name)})
    , m_projects({RowModel<FilterRow>::role("choiceID", &FilterRow::id),
                  RowModel<FilterRow>::role("name", &FilterRow::name)})
{
}

CivilDate RecordsFilter::today() const
{
    return m_context.calendar().dateOf(m_context.clock.now());
}

std::optional<DateRange> RecordsFilter::dates() const
{
    return m_period == RecordsPeriod::custom ? m_customDates
                                             : datesOf(m_period, today(), QLocale().firstDayOfWeek());
}

QString RecordsFilter::firstDate() const
{
    const auto range = dates();
    return range ? written(range->first) : QString();
}

QString RecordsFilter::lastDate() const
{
    const auto range = dates();
    return range ? written(range->last) : QString();
}

void RecordsFilter::setPeriod(const QString& period)
{
    const auto chosen = fromRawValue<RecordsPeriod>(period.toStdString());
    if (!chosen || *chosen == m_period)
        return;
    // One's own period begins as the one that was looked at.
    if (*chosen == RecordsPeriod::custom)
        m_customDates = dates() ? dates() : datesOf(RecordsPeriod::thisMonth, today(), Qt::Monday);
    m_period = *chosen;
    m_datesComplaint.clear();
    Q_EMIT changed();
    Q_EMIT datesChanged();
}

void RecordsFilter::setDates(const QString& first, const QString& last)
{
    const auto from = dateIn(first.trimmed());
    const auto to = dateIn(last.trimmed());
    m_datesComplaint = from && to ? QString() : tr("Enter dates as in %1.").arg(written(today()));
    const auto wanted =
        from && to ? std::optional(DateRange{std::min(*from, *to), std::max(*from, *to)}) : m_customDates;
    const bool isNew = std::exchange(m_customDates, wanted) != wanted;
    Q_EMIT changed();
    if (isNew)
        Q_EMIT datesChanged();
}

void RecordsFilter::setClientID(const QString& id)
{
    setWork({identifierIn<ClientID>(id), std::nullopt});
}

void RecordsFilter::setProjectID(const QString& id)
{
    setWork({m_work.clientID, identifierIn<ProjectID>(id)});
}

void RecordsFilter::setWork(const WorkFilter& work)
{
    if (work == m_work)
        return;
    m_work = work;
    showProjects();
    Q_EMIT changed();
    Q_EMIT workChanged();
}

void RecordsFilter::show(const AssignmentDirectory& directory)
{
    m_directory = directory;
    std::vector<FilterRow> clients{{QString(), tr("All clients")}};
    for (const auto& client : m_directory.clients())
        clients.push_back({text(client.id.uuid), text(client.name)});
    m_clients.show(std::move(clients));
    showProjects();
    // What was deleted meanwhile filters nothing any more.
    if (m_work.clientID && m_directory.client(*m_work.clientID) == nullptr)
        setWork({});
    else if (m_work.projectID && m_directory.project(*m_work.projectID) == nullptr)
        setWork({m_work.clientID, std::nullopt});
}

void RecordsFilter::showProjects()
{
    std::vector<FilterRow> projects{{QString(), tr("All projects")}};
    for (const auto& project : m_directory.projects()) {
        if (m_work.clientID == project.clientID)
            projects.push_back({text(project.id.uuid), text(project.name)});
    }
    m_projects.show(std::move(projects));
}

void RecordsFilter::adopt(const RecordsFilter& other)
{
    m_period = other.m_period;
    m_customDates = other.m_customDates;
    m_datesComplaint.clear();
    m_work = other.m_work;
    show(other.m_directory);
    Q_EMIT changed();
}

} // namespace stintbook
