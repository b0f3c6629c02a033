#pragma once

#include <QObject>
#include <QStringList>

#include <QtQml/qqmlregistration.h>

#include "Screens/Models/RowModel.h"
#include "Screens/Review/WeekRows.h"
#include "Screens/Window/ScreenContext.h"

namespace stintbook {

/// The days around the one that is reviewed, and the months to choose another from, each day with how far its review
/// has come.
class ReviewCalendar : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Made by the application")

    Q_PROPERTY(QAbstractItemModel* week READ week CONSTANT)
    Q_PROPERTY(QAbstractItemModel* month READ month CONSTANT)
    Q_PROPERTY(QStringList weekdays READ weekdays CONSTANT)
    Q_PROPERTY(QString monthTitle READ monthTitle NOTIFY monthChanged)

public:
    explicit ReviewCalendar(const ScreenContext& context, QObject* parent = nullptr);

    QAbstractItemModel* week() { return &m_week; }
    QAbstractItemModel* month() { return &m_month; }
    /// As the columns of the month are named.
    static QStringList weekdays();
    QString monthTitle() const;

    /// The day that is reviewed from now on; its surroundings are read anew.
    void choose(CivilDate date);
    /// Time has passed: it may be another day.
    void tick();
    /// Fills `month` with the one of the day, or of so many months from the one that is shown.
    Q_INVOKABLE void showMonth();
    Q_INVOKABLE void moveMonth(int months);

Q_SIGNALS:
    void monthChanged();

private:
    void readWeek();
    void readMonth();

    ScreenContext m_context;
    CivilDate m_date;
    CivilDate m_today;
    CivilDate m_shownMonth;
    RowModel<WeekDayRow> m_week;
    RowModel<WeekDayRow> m_month;
};

} // namespace stintbook
