#include "Screens/Review/ReviewModel.h"

#include <QLocale>
#include <algorithm>
#include <cmath>
#include <unordered_map>
#include <unordered_set>
#include <utility>

#include "Base/Text.h"
#include "Review/SubjectState.h"
#include "Screens/Models/Texts.h"

namespace stintbook {

namespace {

std::vector<RowModel<ChoiceRow>::Role> choiceRoles()
{
    using Rows = RowModel<ChoiceRow>;
    return {Rows::role("choiceID", &ChoiceRow::id), Rows::role("name", &ChoiceRow::name),
            Rows::role("clientColor", &ChoiceRow::color)};
}

/// A choice that is gone gives way to what lies where it lay. The rows are in order.
const SubjectRow* rowAt(const std::vector<SubjectRow>& rows, double second)
{
    const auto next = std::ranges::upper_bound(rows, second, {}, &SubjectRow::start);
    return next == rows.begin() || std::prev(next)->end <= second ? nullptr : &*std::prev(next);
}

} // namespace

ReviewModel::ReviewModel(const ScreenContext& context, QObject* parent)
    : QObject(parent)
    , m_context(context)
    , m_day(context.calendar().dayOf(context.clock.now()))
    , m_calendar(context)
    , m_blocks(subjectRoles())
    , m_subjects(subjectRoles())
    , m_spans(
          {RowModel<SpanRow>::role("spanID", &SpanRow::id), RowModel<SpanRow>::role("title", &SpanRow::title),
           RowModel<SpanRow>::role("times", &SpanRow::times),
           RowModel<SpanRow>::role("duration", &SpanRow::duration),
           RowModel<SpanRow>::role("isIdle", &SpanRow::isIdle),
           RowModel<SpanRow>::role("start", &SpanRow::start), RowModel<SpanRow>::role("end", &SpanRow::end)})
    , m_lineage({RowModel<LineageRow>::role("times", &LineageRow::times),
                 RowModel<LineageRow>::role("duration", &LineageRow::duration),
                 RowModel<LineageRow>::role("application", &LineageRow::application),
                 RowModel<LineageRow>::role("title", &LineageRow::title),
                 RowModel<LineageRow>::role("domain", &LineageRow::domain)})
    , m_clients(choiceRoles())
    , m_projects(choiceRoles())
{
}

CalendarContext ReviewModel::dayCalendar() const
{
    return CalendarContext::inZone(m_day.timeZoneIdentifier).value_or(m_context.calendar());
}

CivilDate ReviewModel::date() const
{
    return dayCalendar().dateOf(m_day.start);
}

QString ReviewModel::title() const
{
    return QLocale().toString(dateOf(date()), QLocale::LongFormat);
}

QString ReviewModel::figures() const
{
    if (!m_view)
        return {};
    const auto& summary = m_view->day.summary;
    auto words = tr("%1 recorded  ·  %2 assigned  ·  %3")
                     .arg(shortDuration(summary.day.workDuration), shortDuration(summary.assignedDuration),
                          summary.blockCount == 1 ? tr("1 block") : tr("%1 blocks").arg(summary.blockCount));
    if (summary.unresolvedDuration > Seconds{})
        words += tr("  ·  %1 unresolved").arg(shortDuration(summary.unresolvedDuration));
    return words;
}

QString ReviewModel::standing() const
{
    if (!isReady())
        return {};
    const auto since = m_view->day.unreviewedDuration;
    return since > Seconds{}
        ? tr("This day is ready to bill. %1 was recorded since.").arg(shortDuration(since))
        : tr("This day is ready to bill.");
}

bool ReviewModel::isReady() const
{
    return m_view && m_view->day.status == ReviewedDayStatus::ready;
}

bool ReviewModel::canMarkReady() const
{
    if (!m_view || !m_view->day.blockers.empty())
        return false;
    return !isReady() || m_view->day.unreviewedDuration > Seconds{};
}

QStringList ReviewModel::blockers() const
{
    QStringList sentences;
    if (m_view && !isReady()) {
        for (const auto blocker : m_view->day.blockers)
            sentences.append(text(message(blocker)));
    }
    return sentences;
}

double ReviewModel::dayLength() const
{
    return m_view ? m_view->day.content.bounds.length().value : 86'400;
}

double ReviewModel::firstSecond() const
{
    double first = 8 * 3600.0;
    for (const auto& row : m_blocks.rows())
        first = std::min(first, row.start);
    return std::floor(first / 3600) * 3600;
}

double ReviewModel::lastSecond() const
{
    double last = 18 * 3600.0;
    for (const auto& row : m_blocks.rows())
        last = std::max(last, row.end);
    return std::min(std::ceil(last / 3600) * 3600, dayLength());
}

QVariantList ReviewModel::hours() const
{
    QVariantList hours;
    for (double second = firstSecond(); second <= lastSecond(); second += 3600)
        hours.append(
            QVariantMap{{QStringLiteral("second"), second}, {QStringLiteral("name"), timeText(second)}});
    return hours;
}

double ReviewModel::now() const
{
    return m_view ? (m_context.clock.now() - m_view->day.content.bounds.start).value : -1;
}

QString ReviewModel::timeText(double second) const
{
    return m_view ? timeOf(m_view->day.content.bounds.start + Seconds{second}, m_view->calendar) : QString();
}

double ReviewModel::secondOf(const QString& typed, double notBefore) const
{
    if (!m_view)
        return -1;
    const auto words = typed.trimmed();
    const auto time = timeFrom(words);
    const bool isDaysEnd = words == QStringLiteral("24:00");
    if (!time.isValid() && !isDaysEnd)
        return -1;
    const auto& calendar = m_view->calendar;
    const auto bounds = m_view->day.content.bounds;
    const auto at =
        calendar.instantOn(calendar.dateOf(bounds.start), isDaysEnd ? 24 : time.hour(), time.minute(), 0);
    const auto second = (at - bounds.start).value;
    const double isSetBack = calendar.secondsFromGMT(bounds.start) - calendar.secondsFromGMT(bounds.end);
    const bool isShownAgain = isSetBack > 0 && timeText(second + isSetBack) == timeText(second);
    return isShownAgain && second < notBefore ? second + isSetBack : second;
}

void ReviewModel::tick()
{
    Q_EMIT nowChanged();
    m_calendar.tick();
}

void ReviewModel::openToday()
{
    open(m_context.calendar().dayOf(m_context.clock.now()));
}

void ReviewModel::move(int days)
{
    const auto calendar = m_context.calendar();
    const auto to = date().plusDays(days);
    const auto day = calendar.dayOn(to);
    // A date that the zone never had is passed over.
    open(day ? day : calendar.dayOn(to.plusDays(days)));
}

void ReviewModel::openDay(const QString& dayID)
{
    open(dayFromID(dayID.toStdString()));
}

QString ReviewModel::dayID() const
{
    return m_view ? text(stintbook::dayID(m_view->day.content.day)) : QString();
}

void ReviewModel::open(const std::optional<LocalDay>& day)
{
    if (!day)
        return;
    choose({});
    m_day = *day;
    refresh();
}

void ReviewModel::refresh()
{
    // What is not reviewed is cut as the clock of today cuts it.
    if (m_view && m_view->day.content.day == m_day && m_view->day.content.items.empty())
        m_day = m_context.calendar().dayOn(date()).value_or(m_day);
    ask([](StoreDesk::Workplace&, DayBook&, const LocalDay&) { return EditOutcome{}; },
        [this](const QString& problem) {
            // What was refused stands until the next edit, not until the next reading.
            if (!problem.isEmpty() || m_isUnreadable)
                setProblem(problem);
            m_isUnreadable = !problem.isEmpty();
        });
    m_calendar.choose(date());
}

void ReviewModel::edit(Edit edit)
{
    this->edit(std::move(edit), [this](const QString& problem) { setProblem(problem); });
}

void ReviewModel::edit(Edit edit, const Done& done)
{
    setProblem({});
    m_isUnreadable = false;
    ask(std::move(edit), done);
}

void ReviewModel::ask(Edit edit, const Done& done)
{
    struct Answer {
        std::shared_ptr<const DayView> view;
        EditOutcome outcome;
    };
    const auto work = [calendar = m_context.calendar(), day = m_day,
                       edit = std::move(edit)](StoreDesk::Workplace& place) -> Answer {
        DayBook book(place.store, calendar, &place.history);
        Answer answer{.view = nullptr, .outcome = edit ? edit(place, book, day) : EditOutcome{}};
        if (auto view = readDay(book, answer.outcome.day.value_or(day), place.store, place.history))
            answer.view = *std::move(view);
        else
            answer.outcome.problem = message(view.error());
        return answer;
    };
    m_context.desk.ask(
        this, work,
        [this, day = m_day, chosen = m_selection.ids(), done](const Answer& answer) {
            const auto& outcome = answer.outcome;
            // Who has gone to another day, or chosen something else, stays there.
            if (answer.view && m_day == day)
                m_day = answer.view->day.content.day;
            if (answer.view && m_day == answer.view->day.content.day)
                show(answer.view, m_selection.ids() == chosen ? outcome.work : std::vector<UUID>());
            if (!outcome.work.empty() || outcome.day)
                m_calendar.choose(date());
            done(outcome.problem ? text(*outcome.problem) : QString());
        },
        [done](const std::string& problem) { done(text(problem)); });
}

void ReviewModel::show(std::shared_ptr<const DayView> view, const std::vector<UUID>& work)
{
    const auto before = std::exchange(m_view, std::move(view));
    const bool isSameDay = before && before->day.content.day == m_view->day.content.day;
    m_blocks.show(m_view->subjects);
    m_spans.show(m_view->spans);
    std::vector<ChoiceRow> clients;
    for (const auto& client : m_view->directory.selectableClients(std::nullopt))
        clients.push_back(
            {client.id.uuid, text(client.name), client.color ? text(client.color->hex()) : QString()});
    m_clients.show(std::move(clients));
    showProjects();
    showList();
    keepSelection(isSameDay ? before->subjects : std::vector<SubjectRow>(), work);
    Q_EMIT changed();
    Q_EMIT nowChanged();
}

void ReviewModel::keepSelection(const std::vector<SubjectRow>& before, const std::vector<UUID>& work)
{
    auto rows = rowsOf(work);
    if (rows.empty()) {
        std::unordered_map<UUID, double> middles;
        for (const auto& row : before)
            middles.emplace(row.id, (row.start + row.end) / 2);
        std::unordered_set<UUID> there;
        for (const auto& row : m_blocks.rows())
            there.insert(row.id);
        for (const auto& row : m_spans.rows())
            there.insert(row.id);
        std::unordered_set<UUID> kept;
        for (auto id : m_selection.ids()) {
            if (!there.contains(id)) {
                const auto middle = middles.find(id);
                const auto* row = middle == middles.end() ? nullptr : rowAt(m_blocks.rows(), middle->second);
                if (row == nullptr)
                    continue;
                id = row->id;
            }
            if (kept.insert(id).second)
                rows.push_back(id);
        }
    }
    if (rows != m_selection.ids())
        m_selection.set(std::move(rows));
    selectionMoved();
}

std::vector<UUID> ReviewModel::rowsOf(const std::vector<UUID>& work) const
{
    const std::unordered_set<UUID> wanted(work.begin(), work.end());
    std::vector<UUID> rows;
    for (const auto& row : m_blocks.rows()) {
        if (std::ranges::any_of(row.subjects, [&](const UUID& id) { return wanted.contains(id); }))
            rows.push_back(row.id);
    }
    return rows;
}

void ReviewModel::showList()
{
    const auto wanted = foldedForSearch(m_search.trimmed().toStdString());
    std::vector<SubjectRow> rows;
    for (const auto& row : m_blocks.rows()) {
        if ((!m_onlyUnresolved || row.isUnresolved) && row.words.find(wanted) != std::string::npos)
            rows.push_back(row);
    }
    if (m_order == QLatin1String("duration")) {
        std::ranges::stable_sort(rows, std::greater(),
                                 [](const SubjectRow& row) { return row.end - row.start; });
    } else if (m_order == QLatin1String("client")) {
        std::ranges::stable_sort(rows, [](const SubjectRow& a, const SubjectRow& b) {
            return QString::localeAwareCompare(a.client, b.client) < 0;
        });
    }
    m_subjects.show(std::move(rows));
}

void ReviewModel::setSearch(const QString& search)
{
    if (std::exchange(m_search, search) == search)
        return;
    showList();
    Q_EMIT filterChanged();
}

void ReviewModel::setOnlyUnresolved(bool only)
{
    if (std::exchange(m_onlyUnresolved, only) == only)
        return;
    showList();
    Q_EMIT filterChanged();
}

void ReviewModel::setOrder(const QString& order)
{
    if (std::exchange(m_order, order) == order)
        return;
    showList();
    Q_EMIT filterChanged();
}

void ReviewModel::setProblem(const QString& problem)
{
    if (std::exchange(m_problem, problem) != problem)
        Q_EMIT problemChanged();
}

QString ReviewModel::current() const
{
    const auto id = m_selection.current();
    return id ? text(*id) : QString();
}

int ReviewModel::currentRow() const
{
    const auto& rows = m_subjects.rows();
    const auto row = std::ranges::find(rows, m_selection.current().value_or(UUID{}), &SubjectRow::id);
    return row == rows.end() ? -1 : static_cast<int>(row - rows.begin());
}

std::vector<UUID> ReviewModel::listedIDs() const
{
    std::vector<UUID> ids;
    for (const auto& row : m_subjects.rows())
        ids.push_back(row.id);
    return ids;
}

std::vector<UUID> ReviewModel::selectedSubjects() const
{
    std::vector<UUID> subjects;
    for (const auto& row : m_blocks.rows()) {
        if (m_selection.contains(row.id))
            subjects.insert(subjects.end(), row.subjects.begin(), row.subjects.end());
    }
    return subjects;
}

void ReviewModel::leaveSelection()
{
    Q_EMIT selectionLeft();
    setProblem({});
}

void ReviewModel::choose(std::vector<UUID> rows)
{
    leaveSelection();
    m_selection.set(std::move(rows));
    selectionMoved();
}

void ReviewModel::selectionMoved()
{
    auto inspected = Inspection{};
    if (m_view) {
        const auto subjects = selectedSubjects();
        inspected = inspection(*m_view, subjects.empty() ? m_selection.ids() : subjects);
    }
    m_lineage.show(std::move(inspected.lineage));
    Q_EMIT selectionChanged();
    if (std::exchange(m_inspected, inspected.values) != m_inspected)
        Q_EMIT inspectedChanged();
}

bool ReviewModel::isChosen(const QString& rowID) const
{
    const auto id = UUID::parse(rowID.toStdString());
    return id && m_selection.contains(*id);
}

void ReviewModel::select(const QString& rowID)
{
    if (const auto id = UUID::parse(rowID.toStdString()))
        choose({*id});
}

void ReviewModel::toggle(const QString& rowID)
{
    if (const auto id = UUID::parse(rowID.toStdString())) {
        leaveSelection();
        m_selection.toggle(*id);
        selectionMoved();
    }
}

void ReviewModel::extendTo(const QString& rowID)
{
    if (const auto id = UUID::parse(rowID.toStdString())) {
        leaveSelection();
        m_selection.extend(*id, listedIDs());
        selectionMoved();
    }
}

void ReviewModel::selectAll()
{
    choose(listedIDs());
}

void ReviewModel::selectNeighbour(int distance, bool extends)
{
    const auto ids = listedIDs();
    if (ids.empty())
        return;
    const auto last = static_cast<std::ptrdiff_t>(ids.size()) - 1;
    const auto from = std::ranges::find(ids, m_selection.current().value_or(UUID{}));
    const auto next = from == ids.end() ? (distance > 0 ? 0 : last)
                                        : std::clamp<std::ptrdiff_t>(from - ids.begin() + distance, 0, last);
    const auto& id = ids[static_cast<std::size_t>(next)];
    if (!extends)
        return choose({id});
    leaveSelection();
    m_selection.extend(id, ids);
    selectionMoved();
}

void ReviewModel::selectNeighbourInTime(int distance)
{
    std::vector<std::pair<double, UUID>> all;
    for (const auto& row : m_blocks.rows())
        all.emplace_back(row.start, row.id);
    for (const auto& row : m_spans.rows())
        all.emplace_back(row.start, row.id);
    if (all.empty())
        return;
    std::ranges::sort(all);
    const auto last = static_cast<std::ptrdiff_t>(all.size()) - 1;
    const auto from = std::ranges::find(all, m_selection.current().value_or(UUID{}),
                                        [](const auto& entry) { return entry.second; });
    const auto next = from == all.end() ? (distance > 0 ? 0 : last)
                                        : std::clamp<std::ptrdiff_t>(from - all.begin() + distance, 0, last);
    choose({all[static_cast<std::size_t>(next)].second});
}

void ReviewModel::selectNextUnresolved()
{
    const auto& rows = m_blocks.rows();
    const auto from = std::ranges::find(rows, m_selection.current().value_or(UUID{}), &SubjectRow::id);
    const auto begin = from == rows.end() ? 0 : static_cast<std::size_t>(from - rows.begin()) + 1;
    for (std::size_t step = 0; step < rows.size(); ++step) {
        const auto& row = rows[(begin + step) % rows.size()];
        if (row.isUnresolved)
            return choose({row.id});
    }
}

void ReviewModel::selectBlocker(int index)
{
    if (!m_view || index < 0 || static_cast<std::size_t>(index) >= m_view->day.blockers.size())
        return;
    choose(rowsOf(workBehind(m_view->day.blockers[static_cast<std::size_t>(index)], m_view->day.content)));
}

std::optional<std::pair<double, double>> ReviewModel::currentTimes() const
{
    const auto timesIn = [this](const auto& rows) -> std::optional<std::pair<double, double>> {
        for (const auto& row : rows) {
            if (row.id == m_selection.current())
                return std::pair{row.start, row.end};
        }
        return std::nullopt;
    };
    const auto times = timesIn(m_blocks.rows());
    return times ? times : timesIn(m_spans.rows());
}

double ReviewModel::startOfSelection() const
{
    const auto times = currentTimes();
    return times ? times->first : -1;
}

double ReviewModel::middleOfSelection() const
{
    const auto times = currentTimes();
    return times ? (times->first + times->second) / 2 : -1;
}

void ReviewModel::chooseClient(const QString& clientID)
{
    m_projectsOf = ClientID::parse(clientID.toStdString());
    showProjects();
}

void ReviewModel::showProjects()
{
    std::vector<ChoiceRow> projects;
    if (m_view && m_projectsOf) {
        for (const auto& project : m_view->directory.selectableProjects(*m_projectsOf, std::nullopt))
            projects.push_back({project.id.uuid, text(project.name), {}});
    }
    m_projects.show(std::move(projects));
}

} // namespace stintbook
