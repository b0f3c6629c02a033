#include "Screens/Review/ReviewModel.h"

#include <QLocale>
#include <algorithm>
#include <array>
#include <cmath>
#include <utility>

#include "App/ClientBook.h"
#include "Base/Try.h"

namespace stintbook {

/// A day as it was read, with all that is shown of it.
struct ReviewModel::Shown {
    OpenedDay day;
    AssignmentDirectory directory;
    std::vector<SubjectRow> subjects;
    std::vector<SpanRow> spans;
    std::vector<WeekDayRow> week;
    QString undoTitle;
    QString redoTitle;
};

namespace {

std::vector<RowModel<SubjectRow>::Role> subjectRoles()
{
    using Rows = RowModel<SubjectRow>;
    return {Rows::role("subjectID", &SubjectRow::id),
            Rows::role("title", &SubjectRow::title),
            Rows::role("times", &SubjectRow::times),
            Rows::role("duration", &SubjectRow::duration),
            Rows::role("application", &SubjectRow::application),
            Rows::role("client", &SubjectRow::client),
            Rows::role("project", &SubjectRow::project),
            Rows::role("clientColor", &SubjectRow::color),
            Rows::role("state", &SubjectRow::state),
            Rows::role("isUnresolved", &SubjectRow::isUnresolved),
            Rows::role("start", &SubjectRow::start),
            Rows::role("end", &SubjectRow::end),
            Rows::role("words", &SubjectRow::words)};
}

QString titleOf(const EditHistory& history, EditHistory::Direction direction)
{
    const auto* edit = history.next(direction);
    return edit == nullptr ? QString() : text(title(edit->kind));
}

template <typename T> std::optional<std::string> problemOf(const DayEdited<T>& result)
{
    return result ? std::nullopt : std::optional(message(result.error()));
}

} // namespace

ReviewModel::ReviewModel(const ScreenContext& context, QObject* parent)
    : QObject(parent)
    , m_context(context)
    , m_week({RowModel<WeekDayRow>::role("dayID", &WeekDayRow::id),
              RowModel<WeekDayRow>::role("name", &WeekDayRow::name),
              RowModel<WeekDayRow>::role("number", &WeekDayRow::number),
              RowModel<WeekDayRow>::role("isChosen", &WeekDayRow::isChosen),
              RowModel<WeekDayRow>::role("isToday", &WeekDayRow::isToday),
              RowModel<WeekDayRow>::role("isWeekend", &WeekDayRow::isWeekend),
              RowModel<WeekDayRow>::role("hasWork", &WeekDayRow::hasWork),
              RowModel<WeekDayRow>::role("reviewed", &WeekDayRow::reviewed),
              RowModel<WeekDayRow>::role("state", &WeekDayRow::state)})
    , m_subjects(subjectRoles())
    , m_spans({RowModel<SpanRow>::role("title", &SpanRow::title),
               RowModel<SpanRow>::role("isIdle", &SpanRow::isIdle),
               RowModel<SpanRow>::role("start", &SpanRow::start),
               RowModel<SpanRow>::role("end", &SpanRow::end)})
    , m_clients({RowModel<ChoiceRow>::role("choiceID", &ChoiceRow::id),
                 RowModel<ChoiceRow>::role("name", &ChoiceRow::name),
                 RowModel<ChoiceRow>::role("clientColor", &ChoiceRow::color)})
    , m_projects({RowModel<ChoiceRow>::role("choiceID", &ChoiceRow::id),
                  RowModel<ChoiceRow>::role("name", &ChoiceRow::name),
                  RowModel<ChoiceRow>::role("clientColor", &ChoiceRow::color)})
{
}

QString ReviewModel::title() const
{
    return QLocale().toString(dateOf(m_date), QLocale::LongFormat);
}

QString ReviewModel::figures() const
{
    if (!m_shown)
        return {};
    const auto& summary = m_shown->day.summary;
    return tr("%1 recorded  ·  %2 assigned  ·  %3")
        .arg(shortDuration(summary.day.workDuration), shortDuration(summary.assignedDuration),
             summary.blockCount == 1 ? tr("1 block") : tr("%1 blocks").arg(summary.blockCount));
}

bool ReviewModel::isReady() const
{
    return m_shown && m_shown->day.status == ReviewedDayStatus::ready;
}

bool ReviewModel::canMarkReady() const
{
    return m_shown && !isReady() && m_shown->day.blockers.empty();
}

QString ReviewModel::blocker() const
{
    return m_shown && !m_shown->day.blockers.empty() ? text(message(m_shown->day.blockers.front()))
                                                     : QString();
}

double ReviewModel::dayLength() const
{
    return m_shown ? m_shown->day.content.bounds.length().value : 86'400;
}

double ReviewModel::firstSecond() const
{
    double first = 8 * 3600.0;
    for (const auto& row : m_subjects.rows())
        first = std::min(first, row.start);
    return std::floor(first / 3600) * 3600;
}

double ReviewModel::lastSecond() const
{
    double last = 18 * 3600.0;
    for (const auto& row : m_subjects.rows())
        last = std::max(last, row.end);
    return std::min(std::ceil(last / 3600) * 3600, dayLength());
}

QString ReviewModel::undoTitle() const
{
    return m_shown ? m_shown->undoTitle : QString();
}

QString ReviewModel::redoTitle() const
{
    return m_shown ? m_shown->redoTitle : QString();
}

QString ReviewModel::selected() const
{
    return m_selected ? text(*m_selected) : QString();
}

std::optional<std::size_t> ReviewModel::selectedRow() const
{
    const auto& rows = m_subjects.rows();
    const auto found = m_selected ? std::ranges::find(rows, *m_selected, &SubjectRow::id) : rows.end();
    if (found == rows.end())
        return std::nullopt;
    return static_cast<std::size_t>(found - rows.begin());
}

QVariantMap ReviewModel::inspected() const
{
    const auto row = selectedRow();
    return row ? m_subjects.values(*row) : QVariantMap();
}

void ReviewModel::openToday()
{
    open(m_context.calendar().dateOf(m_context.clock.now()));
}

void ReviewModel::move(int days)
{
    open(m_date.plusDays(days));
}

void ReviewModel::openDay(const QString& dayID)
{
    const auto day = dayFromID(dayID.toStdString());
    if (const auto calendar = day ? CalendarContext::inZone(day->timeZoneIdentifier) : std::nullopt)
        open(calendar->dateOf(day->start));
}

void ReviewModel::open(CivilDate date)
{
    m_date = date;
    m_selected.reset();
    Q_EMIT selectionChanged();
    Q_EMIT changed();
    refresh();
}

void ReviewModel::refresh()
{
    edit([](DayBook&, const LocalDay&) -> std::optional<std::string> { return std::nullopt; });
}

void ReviewModel::edit(Edit edit)
{
    const auto calendar = m_context.calendar();
    const auto day = calendar.dayOn(m_date);
    if (!day)
        return;
    struct Answer {
        std::shared_ptr<const Shown> shown;
        std::optional<std::string> problem;
    };
    const auto work = [calendar, day = *day, date = m_date, now = m_context.clock.now(),
                       edit = std::move(edit)](StoreDesk::Workplace& place) -> Answer {
        DayBook book(place.store, calendar, &place.history);
        Answer answer{.shown = nullptr, .problem = edit(book, day)};
        const auto shown = [&]() -> Stored<Shown> {
            Shown made;
            made.day = TRY(book.open(day));
            made.directory = TRY(ClientBook(place.store).directory());
            made.undoTitle = titleOf(place.history, EditHistory::Direction::undo);
            made.redoTitle = titleOf(place.history, EditHistory::Direction::redo);
            made.subjects = subjectRows(made.day.content, made.directory, calendar);
            made.spans = spanRows(made.day.content, calendar);
            const auto strip = datesOfStrip(date);
            made.week =
                weekRows(date, TRY(book.list(calendar.dayOn(strip.front()), calendar.dayOn(strip.back()))),
                         now, calendar);
            return made;
        }();
        if (shown)
            answer.shown = std::make_shared<const Shown>(*shown);
        else
            answer.problem = message(shown.error());
        return answer;
    };
    m_context.desk.ask(
        this, work,
        [this, date = m_date](const Answer& answer) {
            setProblem(answer.problem ? text(*answer.problem) : QString());
            if (answer.shown && date == m_date)
                show(answer.shown);
        },
        [this](const std::string& problem) { setProblem(text(problem)); });
}

void ReviewModel::show(std::shared_ptr<const Shown> shown)
{
    m_shown = std::move(shown);
    m_week.show(m_shown->week);
    m_subjects.show(m_shown->subjects);
    m_spans.show(m_shown->spans);
    std::vector<ChoiceRow> clients;
    for (const auto& client : m_shown->directory.selectableClients(std::nullopt))
        clients.push_back(
            {client.id.uuid, text(client.name), client.color ? text(client.color->hex()) : QString()});
    m_clients.show(std::move(clients));
    if (m_selected && !selectedRow())
        m_selected.reset();
    Q_EMIT changed();
    Q_EMIT selectionChanged();
}

void ReviewModel::setProblem(const QString& problem)
{
    if (std::exchange(m_problem, problem) != problem)
        Q_EMIT problemChanged();
}

void ReviewModel::select(const QString& id)
{
    m_selected = UUID::parse(id.toStdString());
    Q_EMIT selectionChanged();
}

void ReviewModel::selectNeighbour(int distance)
{
    const auto& rows = m_subjects.rows();
    if (rows.empty())
        return;
    const auto last = static_cast<int>(rows.size()) - 1;
    const auto row = selectedRow();
    const int next = row ? std::clamp(static_cast<int>(*row) + distance, 0, last) : 0;
    m_selected = rows[static_cast<std::size_t>(next)].id;
    Q_EMIT selectionChanged();
}

void ReviewModel::selectNextUnresolved()
{
    const auto& rows = m_subjects.rows();
    const auto begin = selectedRow() ? *selectedRow() + 1 : 0;
    for (std::size_t step = 0; step < rows.size(); ++step) {
        const auto& row = rows[(begin + step) % rows.size()];
        if (row.isUnresolved) {
            m_selected = row.id;
            Q_EMIT selectionChanged();
            return;
        }
    }
}

void ReviewModel::chooseClient(const QString& clientID)
{
    const auto id = UUID::parse(clientID.toStdString());
    std::vector<ChoiceRow> projects;
    if (m_shown && id) {
        for (const auto& project : m_shown->directory.selectableProjects(ClientID{*id}, std::nullopt))
            projects.push_back({project.id.uuid, text(project.name), {}});
    }
    m_projects.show(std::move(projects));
}

void ReviewModel::editSelected(
    std::function<std::optional<std::string>(DayBook&, const LocalDay&, UUID)> work)
{
    if (m_selected)
        edit([id = *m_selected, work = std::move(work)](DayBook& book, const LocalDay& day) {
            return work(book, day, id);
        });
}

void ReviewModel::assign(const QString& clientID, const QString& projectID)
{
    const auto client = UUID::parse(clientID.toStdString());
    const auto project = UUID::parse(projectID.toStdString());
    if (!client || !project)
        return;
    editSelected(
        [target = WorkTarget{{*client}, {*project}, {}}](DayBook& book, const LocalDay& day, UUID id) {
            return problemOf(book.assign(day, std::span(&id, 1), target));
        });
}

void ReviewModel::confirm()
{
    editSelected([](DayBook& book, const LocalDay& day, UUID id) {
        return problemOf(book.confirm(day, std::span(&id, 1)));
    });
}

void ReviewModel::ignore()
{
    editSelected([](DayBook& book, const LocalDay& day, UUID id) {
        return problemOf(book.ignore(day, std::span(&id, 1)));
    });
}

void ReviewModel::restore()
{
    editSelected([](DayBook& book, const LocalDay& day, UUID id) {
        return problemOf(book.restore(day, std::span(&id, 1)));
    });
}

void ReviewModel::describe(const QString& words)
{
    editSelected([words = words.toStdString()](DayBook& book, const LocalDay& day, UUID id) {
        return problemOf(book.describe(day, id, words));
    });
}

void ReviewModel::splitAt(double secondOfDay)
{
    editSelected([secondOfDay](DayBook& book, const LocalDay& day, UUID id) {
        return problemOf(book.split(day, id, day.start + Seconds{secondOfDay}));
    });
}

void ReviewModel::mergeWithNext()
{
    const auto row = selectedRow();
    if (!row || *row + 1 >= m_subjects.rows().size())
        return;
    editSelected([next = m_subjects.rows()[*row + 1].id](DayBook& book, const LocalDay& day, UUID id) {
        const std::array both{id, next};
        return problemOf(book.merge(day, both));
    });
}

void ReviewModel::markReady()
{
    edit([now = m_context.clock.now()](DayBook& book, const LocalDay& day) {
        return problemOf(book.markReady(day, now));
    });
}

void ReviewModel::undo()
{
    edit([](DayBook& book, const LocalDay&) { return problemOf(book.undo()); });
}

void ReviewModel::redo()
{
    edit([](DayBook& book, const LocalDay&) { return problemOf(book.redo()); });
}

} // namespace stintbook
