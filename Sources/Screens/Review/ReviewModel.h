#pragma once

#include <QObject>
#include <QVariantList>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

#include <QtQml/qqmlregistration.h>

#include "Domain/LocalDay.h"
#include "Screens/Models/RowModel.h"
#include "Screens/Review/DaySelection.h"
#include "Screens/Review/DayTimes.h"
#include "Screens/Review/DayView.h"
#include "Screens/Review/Inspection.h"
#include "Screens/Review/ReviewCalendar.h"
#include "Screens/Review/ReviewRows.h"
#include "Screens/Review/SubjectFilter.h"
#include "Screens/Window/ScreenContext.h"

namespace stintbook {

/// A client or a project to choose.
struct ChoiceRow {
    UUID id;
    QString name;
    QString color;

    friend bool operator==(const ChoiceRow&, const ChoiceRow&) = default;
};

/// The day that is reviewed, and what of it is shown and selected. What it shows comes whole from the store's thread;
/// the selection, by identifier, outlives every change of the day.
class ReviewModel : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Made by the application")

    Q_PROPERTY(bool isRead READ isRead NOTIFY changed)
    Q_PROPERTY(QString title READ title NOTIFY changed)
    Q_PROPERTY(QString figures READ figures NOTIFY changed)
    Q_PROPERTY(QString standing READ standing NOTIFY changed)
    Q_PROPERTY(bool isReady READ isReady NOTIFY changed)
    Q_PROPERTY(bool canMarkReady READ canMarkReady NOTIFY changed)
    Q_PROPERTY(QStringList blockers READ blockers NOTIFY changed)
    Q_PROPERTY(double dayLength READ dayLength NOTIFY changed)
    Q_PROPERTY(double firstSecond READ firstSecond NOTIFY changed)
    Q_PROPERTY(double lastSecond READ lastSecond NOTIFY changed)
    Q_PROPERTY(QVariantList hours READ hours NOTIFY hoursChanged)
    Q_PROPERTY(double now READ now NOTIFY nowChanged)
    Q_PROPERTY(QString undoTitle READ undoTitle NOTIFY changed)
    Q_PROPERTY(QString redoTitle READ redoTitle NOTIFY changed)
    Q_PROPERTY(QString problem READ problem NOTIFY problemChanged)
    Q_PROPERTY(stintbook::ReviewCalendar* calendar READ calendar CONSTANT)
    Q_PROPERTY(bool hasWork READ hasWork NOTIFY changed)
    Q_PROPERTY(QAbstractItemModel* subjects READ subjects CONSTANT)
    Q_PROPERTY(QAbstractItemModel* lineage READ lineage CONSTANT)
    Q_PROPERTY(QAbstractItemModel* clients READ clients CONSTANT)
    Q_PROPERTY(QAbstractItemModel* projects READ projects CONSTANT)
    Q_PROPERTY(QString current READ current NOTIFY selectionChanged)
    Q_PROPERTY(QVariantMap inspected READ inspected NOTIFY inspectedChanged)
    Q_PROPERTY(QString search READ search WRITE setSearch NOTIFY filterChanged)
    Q_PROPERTY(bool onlyUnresolved READ onlyUnresolved WRITE setOnlyUnresolved NOTIFY filterChanged)
    Q_PROPERTY(QString order READ order WRITE setOrder NOTIFY filterChanged)

public:
    explicit ReviewModel(const ScreenContext& context, QObject* parent = nullptr);

    /// Before, nothing is known of any day.
    bool isRead() const { return m_view != nullptr; }
    QString title() const;
    QString figures() const;
    /// What keeps the day from being ready, or what came since it was.
    QString standing() const;
    bool isReady() const;
    bool canMarkReady() const;
    QStringList blockers() const;
    /// In seconds.
    double dayLength() const;
    /// Whole hours around everything that the day holds.
    double firstSecond() const;
    double lastSecond() const;
    /// The hours between them: [{ second, name }].
    const QVariantList& hours() const { return m_hourMarks; }
    /// Seconds since the day's beginning; outside of the day on every day but today.
    double now() const;
    /// "Assign"; empty when there is nothing to undo.
    QString undoTitle() const { return m_view ? m_view->undoTitle : QString(); }
    QString redoTitle() const { return m_view ? m_view->redoTitle : QString(); }
    /// Why the last thing that was asked for did not happen; until the next, another selection or its dismissal.
    const QString& problem() const { return m_problem; }
    ReviewCalendar* calendar() { return &m_calendar; }
    bool hasWork() const { return !rows().empty(); }
    /// What the list shows.
    QAbstractItemModel* subjects() { return &m_subjects; }
    QAbstractItemModel* lineage() { return &m_lineage; }
    QAbstractItemModel* clients() { return &m_clients; }
    QAbstractItemModel* projects() { return &m_projects; }
    /// The row that was chosen last; empty when none is.
    QString current() const;
    const QVariantMap& inspected() const { return m_inspected; }
    const QString& search() const { return m_filter.search; }
    void setSearch(const QString& search);
    bool onlyUnresolved() const { return m_filter.onlyUnresolved; }
    void setOnlyUnresolved(bool only);
    const QString& order() const { return m_filter.order; }
    void setOrder(const QString& order);

    Q_INVOKABLE void openToday();
    /// Days are moved by calendar dates.
    Q_INVOKABLE void move(int days);
    Q_INVOKABLE void openDay(const QString& dayID);
    Q_INVOKABLE QString dayID() const;

    /// Its place in `subjects`; negative where it is not there.
    Q_INVOKABLE int currentRow() const;
    Q_INVOKABLE bool isChosen(const QString& rowID) const;
    Q_INVOKABLE void select(const QString& rowID);
    Q_INVOKABLE void toggle(const QString& rowID);
    Q_INVOKABLE void extendTo(const QString& rowID);
    Q_INVOKABLE void selectAll();
    Q_INVOKABLE void clearSelection() { choose({}); }
    /// The neighbour of what is current, in the list; the first or last where nothing is.
    Q_INVOKABLE void selectNeighbour(int distance, bool extends = false);
    /// The neighbour in time, idle time and gaps among them.
    Q_INVOKABLE void selectNeighbourInTime(int distance);
    Q_INVOKABLE void selectNextUnresolved();
    /// The work that the blocker is about.
    Q_INVOKABLE void selectBlocker(int index);
    /// Of what was chosen last, in seconds of the day; negative where nothing is.
    Q_INVOKABLE double startOfSelection() const;
    Q_INVOKABLE double middleOfSelection() const;
    /// Fills `projects` with those of the client, also whenever there are others.
    Q_INVOKABLE void chooseClient(const QString& clientID);
    /// See DayTimes.h.
    Q_INVOKABLE double secondOf(const QString& typed, double notBefore = 0) const;
    Q_INVOKABLE QString timeText(double second) const;
    /// Time has passed.
    Q_INVOKABLE void tick();
    Q_INVOKABLE void dismissProblem() { setProblem({}); }

    /// What an edit left: why it was not done, and the work that it was about.
    struct EditOutcome {
        std::optional<std::string> problem;
        std::vector<UUID> work;
        /// Another day that was edited instead.
        std::optional<LocalDay> day;
    };
    using Edit = std::function<EditOutcome(StoreDesk::Workplace& place, DayBook& book, const LocalDay& day)>;
    /// Is told why an edit was not done; nothing when it was.
    using Done = std::function<void(const QString& problem)>;
    /// Does the edit on the desk and shows the day as it is then. What was edited is selected, unless the user has
    /// chosen something else meanwhile.
    void edit(Edit edit, const Done& done);
    /// Why it was not done is the `problem`.
    void edit(Edit edit);
    /// The blocks and items of the selected rows, by time.
    std::vector<UUID> selectedSubjects() const;
    const std::shared_ptr<const DayView>& view() const { return m_view; }
    const DaySelection& selection() const { return m_selection; }
    const ScreenContext& context() const { return m_context; }
    /// Reads the day again.
    void refresh();
    Q_INVOKABLE void setProblem(const QString& problem);

Q_SIGNALS:
    void changed();
    void hoursChanged();
    void nowChanged();
    void problemChanged();
    /// The user is about to choose something else, or another day.
    void selectionLeft();
    void selectionChanged();
    void inspectedChanged();
    void filterChanged();

private:
    /// What cuts the day.
    CalendarContext dayCalendar() const;
    CivilDate date() const;
    void open(const std::optional<LocalDay>& day);
    /// Reads the day behind the edit, or without one.
    void ask(Edit edit, const Done& done);
    void show(std::shared_ptr<const DayView> view, const std::vector<UUID>& work);
    /// Of the whole day, by time.
    const std::vector<SubjectRow>& rows() const;
    const std::vector<SpanRow>& spans() const;
    void setFilter(SubjectFilter filter);
    /// The rows that pass the filter, in its order.
    std::vector<SubjectRow> listed();
    void showList();
    void showProjects();
    void leaveSelection();
    template <typename Change> void changeSelection(Change change);
    void choose(std::vector<UUID> rows);
    void selectionMoved();
    void keepSelection(const std::vector<SubjectRow>& before, const std::vector<UUID>& work);
    std::vector<UUID> listedIDs() const;
    /// Of what was chosen last.
    std::optional<std::pair<double, double>> currentTimes() const;

    ScreenContext m_context;
    LocalDay m_day;
    ReviewCalendar m_calendar;
    std::shared_ptr<const DayView> m_view;
    DaySelection m_selection;
    QVariantMap m_inspected;
    QString m_problem;
    /// The last reading failed, and the problem says why.
    bool m_isUnreadable = false;
    SubjectFilter m_filter;
    /// Of the day that is shown; empty until somebody searches it.
    std::unordered_map<UUID, std::string> m_words;
    ShownHours m_hours;
    QVariantList m_hourMarks;
    RowModel<SubjectRow> m_subjects;
    RowModel<LineageRow> m_lineage;
    RowModel<ChoiceRow> m_clients;
    RowModel<ChoiceRow> m_projects;
    std::optional<ClientID> m_projectsOf;
};

} // namespace stintbook
