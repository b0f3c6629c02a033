#pragma once

#include <QObject>
#include <QTimer>
#include <QVariantMap>
#include <map>
#include <memory>
#include <optional>

#include <QtQml/qqmlregistration.h>

#include "Screens/Records/ExportHistoryModel.h"
#include "Screens/Records/ExportModel.h"
#include "Screens/Records/RecordsFilter.h"
#include "Screens/Records/RecordsRows.h"
#include "Screens/Records/RowSelection.h"
#include "Screens/Window/ScreenContext.h"

namespace stintbook {

/// The days of a period by month, with what was tracked and billed.
///
/// Which days there are is known at once. What they hold is read a few days at a time: the ones that are looked at and
/// selected first, and all of them where the period is short or a filter asks for it. A change of the stored data
/// makes what was read old; old figures are shown until they were read again.
class RecordsModel : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Made by the application")

    Q_PROPERTY(stintbook::RecordsFilter* filter READ filter CONSTANT)
    Q_PROPERTY(stintbook::ExportModel* exporting READ exporting CONSTANT)
    Q_PROPERTY(stintbook::ExportHistoryModel* history READ history CONSTANT)
    Q_PROPERTY(bool isFiltered READ isFiltered NOTIFY changed)
    Q_PROPERTY(QAbstractItemModel* rows READ rows CONSTANT)
    Q_PROPERTY(QString figures MEMBER m_figures NOTIFY changed)
    Q_PROPERTY(bool isReading READ isReading NOTIFY changed)
    Q_PROPERTY(bool isKnown READ isKnown NOTIFY changed)
    Q_PROPERTY(QString current READ current NOTIFY selectionChanged)
    Q_PROPERTY(QVariantMap detail READ detail NOTIFY detailChanged)
    Q_PROPERTY(QAbstractItemModel* lines READ lines CONSTANT)
    Q_PROPERTY(QString problem READ problem NOTIFY problemChanged)

public:
    explicit RecordsModel(const ScreenContext& context, QObject* parent = nullptr);

    RecordsFilter* filter() { return &m_filter; }
    ExportModel* exporting() { return &m_exporting; }
    ExportHistoryModel* history() { return &m_history; }
    /// Draws the timesheets that are shown, for the engine to own.
    TimesheetProvider* timesheetProvider() const { return new TimesheetProvider(m_gallery); }
    bool isFiltered() const { return m_filter.work() != WorkFilter{}; }
    QAbstractItemModel* rows() { return &m_rows; }
    bool isReading() const { return m_isReading; }
    bool isKnown() const { return m_shown != nullptr; }
    const QString& current() const { return m_selection.current(); }
    /// Of the selected day, or of the selected days together.
    const QVariantMap& detail() const { return m_detail; }
    QAbstractItemModel* lines() { return &m_lines; }
    const QString& problem() const { return m_problem; }

    /// Nothing is read while nobody looks.
    Q_INVOKABLE void setVisible(bool isVisible);
    /// The rows that are seen.
    Q_INVOKABLE void look(int firstRow, int lastRow);
    /// "only", "toggle" or "extend"; a month stands for its days.
    Q_INVOKABLE void select(const QString& id, const QString& how);
    /// The same for the row so many rows away; "keep" moves alone.
    Q_INVOKABLE void step(int rows, const QString& how);
    Q_INVOKABLE void selectAll();
    Q_INVOKABLE int rowOf(const QString& id) const;
    Q_INVOKABLE void dismissProblem() { setProblem({}); }

    /// Reads what is shown again.
    void refresh();

Q_SIGNALS:
    void changed();
    void selectionChanged();
    void detailChanged();
    void problemChanged();

private:
    /// What a period was found to hold.
    struct Shown {
        struct Day {
            QString id;
            LocalDay day;
            QDate date;
        };
        /// The latest first.
        std::vector<Day> days;
        AssignmentDirectory directory;
        std::optional<BillingCurrency> currency;
    };
    struct ReadDay {
        DayRecord record;
        /// Of the data from which it was read.
        int revision = 0;
    };

    bool readsEverything() const;
    void readPeriod();
    void readDays();
    void show(std::shared_ptr<const Shown> shown);
    void showRows();
    void keepSelection();
    /// Of the whole period, once all of it was read.
    QString figures() const;
    bool isRead(const std::set<QString>& ids) const;
    /// Of the days among the rows.
    QStringList dayIDs() const;
    QStringList daysOfMonth(const QString& month) const;
    std::vector<LocalDay> wantedDays() const;
    bool isCurrent(const QString& dayID) const;
    std::vector<ReviewedDayLine> linesOfDays(const std::set<QString>& ids) const;
    void showSelection();
    void showDetail();
    void showOpened(const OpenedDay& day);
    QVariantMap figuresOf(const ReviewedWorkTotals& sums) const;
    void setProblem(const QString& problem);

    ScreenContext m_context;
    RecordsFilter m_filter;
    std::shared_ptr<TimesheetGallery> m_gallery = std::make_shared<TimesheetGallery>();
    ExportModel m_exporting;
    ExportHistoryModel m_history;
    std::shared_ptr<const Shown> m_shown;
    std::shared_ptr<const AmountText> m_amounts;
    std::map<QString, ReadDay> m_read;
    std::set<QString> m_seen;
    RowSelection m_selection;
    int m_revision = 0;
    bool m_isVisible = false;
    bool m_isOutdated = true;
    bool m_isReading = false;

    RowModel<RecordRow> m_rows;
    RowModel<RecordLineRow> m_lines;
    QString m_figures;
    QVariantMap m_detail;
    QString m_problem;
    /// Rows are shown a few times a second while many are read.
    QTimer m_showingSoon;
};

} // namespace stintbook
