#pragma once

#include <QObject>
#include <QStringList>
#include <functional>
#include <memory>
#include <optional>

#include <QtQml/qqmlregistration.h>

#include "Screens/Models/RowModel.h"
#include "Screens/Review/ReviewRows.h"
#include "Screens/Window/ScreenContext.h"

namespace stintbook {

/// A client or a project to choose.
struct ChoiceRow {
    UUID id;
    QString name;
    QString color;

    friend bool operator==(const ChoiceRow&, const ChoiceRow&) = default;
};

/// The day that is reviewed, and the edits of it. What it shows comes whole from the store's thread; the selection, by
/// identifier, outlives every change of the day.
class ReviewModel : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Made by the application")

    Q_PROPERTY(QString title READ title NOTIFY changed)
    Q_PROPERTY(QString figures READ figures NOTIFY changed)
    Q_PROPERTY(bool isReady READ isReady NOTIFY changed)
    Q_PROPERTY(bool canMarkReady READ canMarkReady NOTIFY changed)
    Q_PROPERTY(QString blocker READ blocker NOTIFY changed)
    Q_PROPERTY(double dayLength READ dayLength NOTIFY changed)
    Q_PROPERTY(double firstSecond READ firstSecond NOTIFY changed)
    Q_PROPERTY(double lastSecond READ lastSecond NOTIFY changed)
    Q_PROPERTY(QString undoTitle READ undoTitle NOTIFY changed)
    Q_PROPERTY(QString redoTitle READ redoTitle NOTIFY changed)
    Q_PROPERTY(QString problem READ problem NOTIFY problemChanged)
    Q_PROPERTY(QAbstractItemModel* week READ week CONSTANT)
    Q_PROPERTY(QAbstractItemModel* subjects READ subjects CONSTANT)
    Q_PROPERTY(QAbstractItemModel* spans READ spans CONSTANT)
    Q_PROPERTY(QAbstractItemModel* clients READ clients CONSTANT)
    Q_PROPERTY(QAbstractItemModel* projects READ projects CONSTANT)
    Q_PROPERTY(QString selected READ selected WRITE select NOTIFY selectionChanged)
    Q_PROPERTY(QVariantMap inspected READ inspected NOTIFY selectionChanged)

public:
    explicit ReviewModel(const ScreenContext& context, QObject* parent = nullptr);

    QString title() const;
    QString figures() const;
    bool isReady() const;
    bool canMarkReady() const;
    /// Why the day cannot be marked ready; empty when it can be, or is.
    QString blocker() const;
    /// In seconds.
    double dayLength() const;
    /// Whole hours around everything that the day holds.
    double firstSecond() const;
    double lastSecond() const;
    /// "Assign"; empty when there is nothing to undo.
    QString undoTitle() const;
    QString redoTitle() const;
    /// Why the last thing that was asked for did not happen.
    const QString& problem() const { return m_problem; }
    QAbstractItemModel* week() { return &m_week; }
    QAbstractItemModel* subjects() { return &m_subjects; }
    QAbstractItemModel* spans() { return &m_spans; }
    QAbstractItemModel* clients() { return &m_clients; }
    QAbstractItemModel* projects() { return &m_projects; }
    QString selected() const;
    /// The row of what is selected, by the roles' names; empty without a selection.
    QVariantMap inspected() const;

    Q_INVOKABLE void openToday();
    /// Days are moved by calendar dates.
    Q_INVOKABLE void move(int days);
    Q_INVOKABLE void openDay(const QString& dayID);
    Q_INVOKABLE void select(const QString& id);
    /// The neighbour of what is selected; the first where nothing is.
    Q_INVOKABLE void selectNeighbour(int distance);
    Q_INVOKABLE void selectNextUnresolved();
    /// Fills `projects` with those of the client.
    Q_INVOKABLE void chooseClient(const QString& clientID);
    Q_INVOKABLE void assign(const QString& clientID, const QString& projectID);
    Q_INVOKABLE void confirm();
    Q_INVOKABLE void ignore();
    Q_INVOKABLE void restore();
    Q_INVOKABLE void describe(const QString& text);
    Q_INVOKABLE void splitAt(double secondOfDay);
    Q_INVOKABLE void mergeWithNext();
    Q_INVOKABLE void markReady();
    Q_INVOKABLE void undo();
    Q_INVOKABLE void redo();
    Q_INVOKABLE void dismissProblem() { setProblem({}); }
    /// Reads the day again.
    void refresh();

Q_SIGNALS:
    void changed();
    void problemChanged();
    void selectionChanged();

private:
    struct Shown;
    using Edit = std::function<std::optional<std::string>(DayBook& book, const LocalDay& day)>;

    void open(CivilDate date);
    /// Does the edit and reads the day, or tells why it was not done.
    void edit(Edit edit);
    void editSelected(std::function<std::optional<std::string>(DayBook&, const LocalDay&, UUID)> edit);
    void show(std::shared_ptr<const Shown> shown);
    void setProblem(const QString& problem);
    std::optional<std::size_t> selectedRow() const;

    ScreenContext m_context;
    CivilDate m_date;
    std::shared_ptr<const Shown> m_shown;
    std::optional<UUID> m_selected;
    QString m_problem;
    RowModel<WeekDayRow> m_week;
    RowModel<SubjectRow> m_subjects;
    RowModel<SpanRow> m_spans;
    RowModel<ChoiceRow> m_clients;
    RowModel<ChoiceRow> m_projects;
};

} // namespace stintbook
