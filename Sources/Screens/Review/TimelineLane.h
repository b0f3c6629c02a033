#pragma once

#include <QColor>
#include <QPixmap>
#include <QQuickPaintedItem>
#include <QRectF>
#include <compare>
#include <memory>
#include <vector>

#include <QtQml/qqmlregistration.h>

#include "Screens/Review/ReviewModel.h"

namespace stintbook {

/// What lies somewhere on the timeline; without an identifier where nothing does.
struct TimelinePlace {
    Q_GADGET
    QML_VALUE_TYPE(timelinePlace)
    Q_PROPERTY(QString id MEMBER id)
    Q_PROPERTY(QString name MEMBER name)
    Q_PROPERTY(QString hint MEMBER hint)
    Q_PROPERTY(bool isWork MEMBER isWork)
    Q_PROPERTY(double start MEMBER start)
    Q_PROPERTY(double end MEMBER end)
    Q_PROPERTY(double x MEMBER x)
    Q_PROPERTY(double width MEMBER width)

public:
    QString id;
    /// Who listens to it hears this; who points at it reads that.
    QString name;
    QString hint;
    bool isWork = false;
    /// Seconds since the day's beginning.
    double start = 0;
    double end = 0;
    /// In points of the lane.
    double x = 0;
    double width = 0;

    friend bool operator==(const TimelinePlace&, const TimelinePlace&) = default;
};

/// The day's blocks in their clients' colours, idle time and what was not recorded, each told apart by its pattern. As
/// large as what is seen of the timeline and painted at once: a day may have hundreds of blocks.
class TimelineLane : public QQuickPaintedItem {
    Q_OBJECT
    QML_ELEMENT

    Q_PROPERTY(stintbook::ReviewModel* review READ review WRITE setReview NOTIFY reviewChanged REQUIRED)
    /// The second of the day where the parent begins, in which the lane lies at its `x`.
    Q_PROPERTY(double firstSecond MEMBER m_firstSecond NOTIFY scaleChanged)
    Q_PROPERTY(double pointsPerSecond MEMBER m_pointsPerSecond NOTIFY scaleChanged)
    /// Above and below, for the frame of what is chosen.
    Q_PROPERTY(double inset MEMBER m_inset NOTIFY scaleChanged)
    /// Of work for nobody, of idle time and of the hatch over what was not recorded.
    Q_PROPERTY(QColor anonymous MEMBER m_anonymous NOTIFY inkChanged)
    Q_PROPERTY(QColor idle MEMBER m_idle NOTIFY inkChanged)
    Q_PROPERTY(QColor hatch MEMBER m_hatch NOTIFY inkChanged)
    /// Around what is in conflict, and around what is chosen.
    Q_PROPERTY(QColor warning MEMBER m_warning NOTIFY inkChanged)
    Q_PROPERTY(QColor frame MEMBER m_frame NOTIFY inkChanged)
    /// Where the mouse is, in points of the lane; negative while it is elsewhere.
    Q_PROPERTY(double mouse MEMBER m_mouse NOTIFY mouseChanged)
    /// What the mouse is over.
    Q_PROPERTY(stintbook::TimelinePlace pointed READ pointed NOTIFY pointedChanged)
    /// What was chosen last.
    Q_PROPERTY(stintbook::TimelinePlace current READ current NOTIFY currentChanged)
    /// Its number among all that the lane shows, by time, from one; 0 where nothing is chosen. As assistive technology
    /// names them.
    Q_PROPERTY(int value READ value WRITE setValue NOTIFY valueChanged)
    Q_PROPERTY(int minimumValue READ minimumValue CONSTANT)
    Q_PROPERTY(int maximumValue READ maximumValue NOTIFY rowsChanged)

public:
    explicit TimelineLane(QQuickItem* parent = nullptr);

    ReviewModel* review() const { return m_review; }
    void setReview(ReviewModel* review);
    const TimelinePlace& pointed() const { return m_pointed; }
    const TimelinePlace& current() const { return m_current; }
    int value() const { return m_value; }
    void setValue(int value);
    static int minimumValue() { return 0; }
    int maximumValue() const { return static_cast<int>(m_steps.size()); }
    /// What a press there is about.
    Q_INVOKABLE stintbook::TimelinePlace placeAt(double x) const;

    void paint(QPainter* painter) override;

Q_SIGNALS:
    void reviewChanged();
    void scaleChanged();
    void inkChanged();
    void mouseChanged();
    void pointedChanged();
    void currentChanged();
    void valueChanged();
    void rowsChanged();

protected:
    void geometryChange(const QRectF& now, const QRectF& before) override;

private:
    /// Work, idle time or a gap, by its start.
    struct Step {
        double start = 0;
        UUID id;

        friend auto operator<=>(const Step&, const Step&) = default;
    };

    void readRows();
    const std::vector<SubjectRow>& work() const;
    const std::vector<SpanRow>& spans() const;
    /// Something lies elsewhere, or is chosen.
    void settle();
    void point();
    double xOf(double second) const;
    QRectF area(double start, double end, double leastWidth, double space) const;
    QRectF area(const SubjectRow& row) const;
    QRectF area(const SpanRow& row) const;
    TimelinePlace place(const SubjectRow& row) const;
    TimelinePlace place(const SpanRow& row) const;
    TimelinePlace placeOf(const UUID& id) const;
    template <typename Row> const Row* rowAt(const std::vector<Row>& rows, double x) const;
    /// The rows of which anything, or anything of their frame, can be seen.
    template <typename Row> auto seen(const std::vector<Row>& rows) const;
    void paintSpans(QPainter& painter) const;
    void paintWork(QPainter& painter) const;
    void paintFrames(QPainter& painter) const;
    /// To whole pixels of the screen.
    QRectF snapped(const QRectF& area) const;
    QPixmap hatching() const;

    ReviewModel* m_review = nullptr;
    double m_firstSecond = 0;
    double m_pointsPerSecond = 0;
    double m_inset = 0;
    QColor m_anonymous;
    QColor m_idle;
    QColor m_hatch;
    QColor m_warning;
    QColor m_frame;
    double m_mouse = -1;
    /// What is painted; work may lie over idle time, and over brief work that is gathered around it.
    std::shared_ptr<const DayView> m_view;
    std::vector<Step> m_steps;
    TimelinePlace m_pointed;
    TimelinePlace m_current;
    int m_value = 0;
};

} // namespace stintbook
