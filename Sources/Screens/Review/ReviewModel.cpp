#include "Screens/Review/ReviewModel.h"

#include <QLocale>
#include <algorithm>
#include <ranges>
#include <utility>

#include "Screens/Models/Texts.h"

namespace stintbook {

namespace {

std::vector<RowModel<ChoiceRow>::Role> choiceRoles()
{
    using Rows = RowModel<ChoiceRow>;
    return {Rows::role("choiceID", &ChoiceRow::id), Rows::role("name", &ChoiceRow::name),
            Rows::role("clientColor", &ChoiceRow::color)};
}

} // namespace

ReviewModel::ReviewModel(const ScreenContext& context, QObject* parent)
    : QObject(parent)
    , m_context(context)
    , m_day(context.calendar().dayOf(context.clock.now()))
    , m_calendar(context)
    , m_subjects(subjectRoles())
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
    return m_view ? m_view->content().bounds.length().value : 86'400;
}

double ReviewModel::firstSecond() const
{
    return m_hours.first;
}

double ReviewModel::lastSecond() const
{
    return m_hours.last;
}

double ReviewModel::now() const
{
    return m_view ? (m_context.clock.now() - m_view->content().bounds.start).value : -1;
}

QString ReviewModel::timeText(double second) const
{
    return m_view ? stintbook::timeText(*m_view, second) : QString();
}

double ReviewModel::secondOf(const QString& typed, double notBefore) const
{
    return m_view ? stintbook::secondOf(*m_view, typed, notBefore) : -1;
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
    return m_view ? text(stintbook::dayID(m_view->content().day)) : QString();
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
    if (m_view && m_view->content().day == m_day && m_view->content().items.empty())
        m_day = m_context.calendar().dayOn(date()).value_or(m_day);
    ask({}, [this](const QString& problem) {
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
    const auto work = [calendar = m_context.calendar(), day = m_day, shown = m_view,
                       edit = std::move(edit)](StoreDesk::Workplace& place) -> Answer {
        DayBook book(place.store, calendar, &place.session);
        Answer answer{.view = nullptr, .outcome = edit ? edit(place, book, day) : EditOutcome{}};
        if (auto view = readDay(book, answer.outcome.day.value_or(day), place, shown))
            answer.view = *std::move(view);
        else
            answer.outcome.problem = message(view.error());
        return answer;
    };
    m_context.desk.ask(
        this, work,
        [this, day = m_day, chosen = m_selection.ids(), done](Answer answer) {
            const auto& outcome = answer.outcome;
            // Who has gone to another day, or chosen something else, stays there.
            if (answer.view && m_day == day)
                m_day = answer.view->content().day;
            if (answer.view && m_day == answer.view->content().day)
                show(answer.view, m_selection.ids() == chosen ? outcome.work : std::vector<UUID>());
            m_context.desk.letGo(std::move(answer.view));
            if (!outcome.work.empty() || outcome.day)
                m_calendar.choose(date());
            done(outcome.problem ? text(*outcome.problem) : QString());
        },
        [done](const std::string& problem) { done(text(problem)); });
}

void ReviewModel::show(std::shared_ptr<const DayView> view, const std::vector<UUID>& work)
{
    auto before = std::exchange(m_view, std::move(view));
    if (before == m_view && work.empty())
        return;
    const bool isSameDay = before && before->content().day == m_view->content().day;
    m_words.clear();
    m_hours = shownHours(*m_view);
    // Their marks are made anew only when they are others.
    const bool areOtherMarks = std::exchange(m_hourMarks, hourMarks(*m_view, m_hours)) != m_hourMarks;
    std::vector<ChoiceRow> clients;
    for (const auto& client : m_view->directory().selectableClients(std::nullopt))
        clients.push_back(
            {client.id.uuid, text(client.name), client.color ? text(client.color->hex()) : QString()});
    m_clients.show(std::move(clients));
    showProjects();
    if (isSameDay)
        showList();
    else
        m_subjects.showInPlace(listed());
    keepSelection(isSameDay ? before->subjects : std::vector<SubjectRow>(), work);
    Q_EMIT changed();
    if (areOtherMarks)
        Q_EMIT hoursChanged();
    Q_EMIT nowChanged();
    m_context.desk.letGo(std::move(before));
}

const std::vector<SubjectRow>& ReviewModel::rows() const
{
    static const std::vector<SubjectRow> none;
    return m_view ? m_view->subjects : none;
}

const std::vector<SpanRow>& ReviewModel::spans() const
{
    static const std::vector<SpanRow> none;
    return m_view ? m_view->spans : none;
}

void ReviewModel::keepSelection(const std::vector<SubjectRow>& before, const std::vector<UUID>& work)
{
    auto chosen = rowsOf(work, rows());
    if (chosen.empty())
        chosen = keptRows(m_selection.ids(), before, *m_view);
    if (chosen != m_selection.ids())
        m_selection.set(std::move(chosen));
    selectionMoved();
}

std::vector<SubjectRow> ReviewModel::listed()
{
    if (m_words.empty() && !m_filter.search.isEmpty())
        m_words = searchedWords(*m_view);
    return m_filter.listed(m_view->subjects, m_words);
}

void ReviewModel::showList()
{
    if (m_view)
        m_subjects.show(listed());
}

void ReviewModel::setFilter(SubjectFilter filter)
{
    if (m_filter == filter)
        return;
    m_filter = std::move(filter);
    showList();
    Q_EMIT filterChanged();
}

void ReviewModel::setSearch(const QString& search)
{
    setFilter({search, m_filter.onlyUnresolved, m_filter.order});
}

void ReviewModel::setOnlyUnresolved(bool only)
{
    setFilter({m_filter.search, only, m_filter.order});
}

void ReviewModel::setOrder(const QString& order)
{
    setFilter({m_filter.search, m_filter.onlyUnresolved, order});
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
    for (const auto& row : rows()) {
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

template <typename Change> void ReviewModel::changeSelection(Change change)
{
    leaveSelection();
    change(m_selection);
    selectionMoved();
}

void ReviewModel::choose(std::vector<UUID> rows)
{
    changeSelection([&](DaySelection& selection) { selection.set(std::move(rows)); });
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
    if (const auto id = UUID::parse(rowID.toStdString()))
        changeSelection([&](DaySelection& selection) { selection.toggle(*id); });
}

void ReviewModel::extendTo(const QString& rowID)
{
    if (const auto id = UUID::parse(rowID.toStdString()))
        changeSelection([&](DaySelection& selection) { selection.extend(*id, listedIDs()); });
}

void ReviewModel::selectAll()
{
    choose(listedIDs());
}

void ReviewModel::selectNeighbour(int distance, bool extends)
{
    const auto ids = listedIDs();
    const auto next = neighbour(ids, m_selection.current(), distance);
    if (next && extends)
        changeSelection([&](DaySelection& selection) { selection.extend(*next, ids); });
    else if (next)
        choose({*next});
}

void ReviewModel::selectNeighbourInTime(int distance)
{
    std::vector<std::pair<double, UUID>> all;
    for (const auto& row : rows())
        all.emplace_back(row.start, row.id);
    for (const auto& span : spans())
        all.emplace_back(span.start, span.id);
    std::ranges::sort(all);
    const auto ids = std::views::values(all);
    if (const auto next = neighbour({ids.begin(), ids.end()}, m_selection.current(), distance))
        choose({*next});
}

void ReviewModel::selectNextUnresolved()
{
    const auto& all = rows();
    const auto from = std::ranges::find(all, m_selection.current().value_or(UUID{}), &SubjectRow::id);
    const auto begin = from == all.end() ? 0 : static_cast<std::size_t>(from - all.begin()) + 1;
    for (std::size_t step = 0; step < all.size(); ++step) {
        const auto& row = all[(begin + step) % all.size()];
        if (row.isUnresolved)
            return choose({row.id});
    }
}

void ReviewModel::selectBlocker(int index)
{
    if (!m_view || index < 0 || static_cast<std::size_t>(index) >= m_view->day.blockers.size())
        return;
    choose(
        rowsOf(workBehind(m_view->day.blockers[static_cast<std::size_t>(index)], m_view->content()), rows()));
}

std::optional<std::pair<double, double>> ReviewModel::currentTimes() const
{
    const auto timesIn = [this](const auto& all) -> std::optional<std::pair<double, double>> {
        for (const auto& row : all) {
            if (row.id == m_selection.current())
                return std::pair{row.start, row.end};
        }
        return std::nullopt;
    };
    const auto times = timesIn(rows());
    return times ? times : timesIn(spans());
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
        for (const auto& project : m_view->directory().selectableProjects(*m_projectsOf, std::nullopt))
            projects.push_back({project.id.uuid, text(project.name), {}});
    }
    m_projects.show(std::move(projects));
}

} // namespace stintbook
