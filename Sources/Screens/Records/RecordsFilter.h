#pragma once

#include <QObject>
#include <optional>

#include <QtQml/qqmlregistration.h>

#include "App/RecordsPeriod.h"
#include "Billing/ReviewedDayReading.h"
#include "Screens/Models/RowModel.h"
#include "Screens/Window/ScreenContext.h"

namespace stintbook {

/// A client or a project to look at; the empty identifier stands for all.
struct FilterRow {
    QString id;
    QString name;

    friend bool operator==(const FilterRow&, const FilterRow&) = default;
};

/// Which days and whose work are asked for.
class RecordsFilter : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Made by the application")

    Q_PROPERTY(QString period READ period WRITE setPeriod NOTIFY changed)
    Q_PROPERTY(QString firstDate READ firstDate NOTIFY changed)
    Q_PROPERTY(QString lastDate READ lastDate NOTIFY changed)
    Q_PROPERTY(QString datesComplaint READ datesComplaint NOTIFY changed)
    Q_PROPERTY(QString clientID READ clientID WRITE setClientID NOTIFY changed)
    Q_PROPERTY(QString projectID READ projectID WRITE setProjectID NOTIFY changed)
    Q_PROPERTY(QAbstractItemModel* clients READ clients CONSTANT)
    Q_PROPERTY(QAbstractItemModel* projects READ projects CONSTANT)

public:
    explicit RecordsFilter(const ScreenContext& context, QObject* parent = nullptr);

    /// The periods' raw names.
    QString period() const { return text(rawValue(m_period)); }
    void setPeriod(const QString& period);
    /// Absent for all days.
    std::optional<DateRange> dates() const;
    /// As the reader's locale writes them; empty for all days.
    QString firstDate() const;
    QString lastDate() const;
    const QString& datesComplaint() const { return m_datesComplaint; }
    /// As the reader's locale writes dates, either first; complained about where one is none.
    Q_INVOKABLE void setDates(const QString& first, const QString& last);

    QString clientID() const { return m_work.clientID ? text(m_work.clientID->uuid) : QString(); }
    void setClientID(const QString& id);
    QString projectID() const { return m_work.projectID ? text(m_work.projectID->uuid) : QString(); }
    void setProjectID(const QString& id);
    const WorkFilter& work() const { return m_work; }

    QAbstractItemModel* clients() { return &m_clients; }
    QAbstractItemModel* projects() { return &m_projects; }

    /// The clients and projects that there are.
    void show(const AssignmentDirectory& directory);
    /// Asks for what the other one asks for.
    void adopt(const RecordsFilter& other);

Q_SIGNALS:
    /// Before these two.
    void changed();
    void datesChanged();
    void workChanged();

private:
    CivilDate today() const;
    void setWork(const WorkFilter& work);
    void showProjects();

    ScreenContext m_context;
    RecordsPeriod m_period = RecordsPeriod::thisMonth;
    std::optional<DateRange> m_customDates;
    QString m_datesComplaint;
    WorkFilter m_work;
    AssignmentDirectory m_directory;
    RowModel<FilterRow> m_clients;
    RowModel<FilterRow> m_projects;
};

} // namespace stintbook
