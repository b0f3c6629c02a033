#include "Screens/Review/TimelineLane.h"

#include <QPainter>
#include <QQuickWindow>
#include <algorithm>
#include <cmath>
#include <ranges>
#include <utility>

#include "Review/SubjectState.h"
#include "Screens/Models/Texts.h"
#include "Screens/Window/GlyphProvider.h"

namespace stintbook {

namespace {

constexpr double leastSpanWidth = 1;
constexpr double leastWorkWidth = 2;
/// Narrower work goes without a space to what follows.
constexpr double leastSpacedWidth = 4;
constexpr double spaceBehindWork = 1;
constexpr double corner = 3;
constexpr double frameWidth = 2;
/// Of the frame around chosen work, beyond it.
constexpr double frameReach = 3;
constexpr double hatchOpacity = 0.6;
constexpr double ignoredOpacity = 0.35;
constexpr int hatchSize = 8;

/// A frame that lies inside of the rectangle.
void paintFrame(QPainter& painter, const QRectF& around, double radius, const QColor& ink)
{
    constexpr auto half = frameWidth / 2;
    painter.setPen(QPen(ink, frameWidth));
    painter.setBrush(Qt::NoBrush);
    painter.drawRoundedRect(around.adjusted(half, half, -half, -half), radius - half, radius - half);
}

QString named(const QString& first, const QString& second, const QString& third)
{
    return TimelineLane::tr("%1, %2, %3").arg(first, second, third);
}

QString hinted(const QString& first, const QString& second, const QString& third)
{
    return TimelineLane::tr("%1  ·  %2  ·  %3").arg(first, second, third);
}

} // namespace

TimelineLane::TimelineLane(QQuickItem* parent)
    : QQuickPaintedItem(parent)
{
    connect(this, &TimelineLane::scaleChanged, this, &TimelineLane::settle);
    connect(this, &TimelineLane::inkChanged, this, [this] { update(); });
    connect(this, &TimelineLane::mouseChanged, this, &TimelineLane::point);
}

void TimelineLane::setReview(ReviewModel* review)
{
    if (std::exchange(m_review, review) == review)
        return;
    connect(review, &ReviewModel::changed, this, &TimelineLane::readRows);
    connect(review, &ReviewModel::selectionChanged, this, &TimelineLane::settle);
    Q_EMIT reviewChanged();
    readRows();
}

void TimelineLane::readRows()
{
    if (std::exchange(m_view, m_review->view()) == m_review->view())
        return;
    m_steps.clear();
    for (const auto& row : work())
        m_steps.push_back({row.start, row.id});
    for (const auto& row : spans())
        m_steps.push_back({row.start, row.id});
    std::ranges::sort(m_steps);
    Q_EMIT rowsChanged();
    settle();
}

const std::vector<SubjectRow>& TimelineLane::work() const
{
    static const std::vector<SubjectRow> none;
    return m_view ? m_view->subjects : none;
}

const std::vector<SpanRow>& TimelineLane::spans() const
{
    static const std::vector<SpanRow> none;
    return m_view ? m_view->spans : none;
}

void TimelineLane::settle()
{
    const auto chosen = m_review == nullptr ? std::nullopt : m_review->selection().current();
    const auto found = std::ranges::find(m_steps, chosen, &Step::id);
    const auto current = found == m_steps.end() ? TimelinePlace() : placeOf(found->id);
    const auto value = found == m_steps.end() ? 0 : static_cast<int>(found - m_steps.begin()) + 1;
    if (std::exchange(m_current, current) != current)
        Q_EMIT currentChanged();
    if (std::exchange(m_value, value) != value)
        Q_EMIT valueChanged();
    point();
    update();
}

void TimelineLane::point()
{
    auto pointed = m_mouse < 0 ? TimelinePlace() : placeAt(m_mouse);
    if (pointed == m_pointed)
        return;
    m_pointed = std::move(pointed);
    Q_EMIT pointedChanged();
}

void TimelineLane::setValue(int value)
{
    if (value > 0 && value <= maximumValue())
        m_review->select(text(m_steps[static_cast<std::size_t>(value) - 1].id));
}

void TimelineLane::geometryChange(const QRectF& now, const QRectF& before)
{
    QQuickPaintedItem::geometryChange(now, before);
    settle();
}

/// Whole points, or the spaces between blocks would vanish.
double TimelineLane::xOf(double second) const
{
    return std::round((second - m_firstSecond) * m_pointsPerSecond) - x();
}

QRectF TimelineLane::area(double start, double end, double leastWidth, double space) const
{
    const auto left = xOf(start);
    const auto width = xOf(end) - left;
    return {left, m_inset, std::max(leastWidth, width > leastSpacedWidth ? width - space : width),
            height() - 2 * m_inset};
}

QRectF TimelineLane::area(const SubjectRow& row) const
{
    return area(row.start, row.end, leastWorkWidth, spaceBehindWork);
}

QRectF TimelineLane::area(const SpanRow& row) const
{
    return area(row.start, row.end, leastSpanWidth, 0);
}

TimelinePlace TimelineLane::place(const SubjectRow& row) const
{
    const auto lies = area(row);
    return {.id = text(row.id),
            .name = named(row.times, row.title, row.client.isEmpty() ? tr("unassigned") : row.client),
            .hint = hinted(row.times, row.duration, row.title),
            .isWork = true,
            .start = row.start,
            .end = row.end,
            .x = lies.x(),
            .width = lies.width()};
}

TimelinePlace TimelineLane::place(const SpanRow& row) const
{
    const auto lies = area(row);
    return {.id = text(row.id),
            .name = named(row.title, row.times, row.duration),
            .hint = hinted(row.title, row.times, row.duration),
            .isWork = false,
            .start = row.start,
            .end = row.end,
            .x = lies.x(),
            .width = lies.width()};
}

TimelinePlace TimelineLane::placeOf(const UUID& id) const
{
    if (const auto row = std::ranges::find(work(), id, &SubjectRow::id); row != work().end())
        return place(*row);
    const auto row = std::ranges::find(spans(), id, &SpanRow::id);
    return row == spans().end() ? TimelinePlace() : place(*row);
}

template <typename Row> const Row* TimelineLane::rowAt(const std::vector<Row>& rows, double x) const
{
    const auto after =
        std::ranges::upper_bound(rows, x, {}, [this](const Row& row) { return xOf(row.start); });
    // What began last lies above what is around it.
    const auto above = std::ranges::subrange(rows.begin(), after) | std::views::reverse;
    const auto row = std::ranges::find_if(above, [&](const Row& one) { return x < area(one).right(); });
    return row == above.end() ? nullptr : &*row;
}

TimelinePlace TimelineLane::placeAt(double x) const
{
    if (const auto* row = rowAt(work(), x))
        return place(*row);
    const auto* row = rowAt(spans(), x);
    return row == nullptr ? TimelinePlace() : place(*row);
}

template <typename Row> auto TimelineLane::seen(const std::vector<Row>& rows) const
{
    return rows | std::views::filter([this](const Row& row) {
               const auto lies = area(row);
               return lies.right() + frameReach > 0 && lies.left() - frameReach < width();
           });
}

void TimelineLane::paint(QPainter* painter)
{
    painter->setRenderHint(QPainter::Antialiasing);
    paintSpans(*painter);
    paintWork(*painter);
    paintFrames(*painter);
}

void TimelineLane::paintSpans(QPainter& painter) const
{
    const auto hatched = hatching();
    for (const auto& row : seen(spans())) {
        const auto rectangle = snapped(area(row));
        if (row.isIdle) {
            painter.fillRect(rectangle, m_idle);
            continue;
        }
        painter.setOpacity(hatchOpacity);
        painter.drawTiledPixmap(rectangle, hatched);
        painter.setOpacity(1);
    }
}

void TimelineLane::paintWork(QPainter& painter) const
{
    const auto ignored = text(rawValue(SubjectState::ignored));
    const auto conflicting = text(rawValue(SubjectState::conflicting));
    for (const auto& row : seen(work())) {
        const auto rectangle = snapped(area(row));
        const auto radius = std::min(corner, rectangle.width() / 3);
        painter.setPen(Qt::NoPen);
        painter.setBrush(row.color.isEmpty() ? m_anonymous : QColor(row.color));
        painter.setOpacity(row.state == ignored ? ignoredOpacity : 1);
        painter.drawRoundedRect(rectangle, radius, radius);
        painter.setOpacity(1);
        if (row.state == conflicting)
            paintFrame(painter, rectangle, radius, m_warning);
    }
}

void TimelineLane::paintFrames(QPainter& painter) const
{
    const auto& chosen = m_review->selection();
    for (const auto& row : seen(spans())) {
        if (chosen.contains(row.id))
            paintFrame(painter, snapped(area(row)), corner, m_frame);
    }
    for (const auto& row : seen(work())) {
        if (chosen.contains(row.id))
            paintFrame(painter, snapped(area(row)).adjusted(-frameReach, -frameReach, frameReach, frameReach),
                       corner + frameWidth, m_frame);
    }
}

QRectF TimelineLane::snapped(const QRectF& area) const
{
    const auto ratio = window()->effectiveDevicePixelRatio();
    const auto snap = [ratio](double place) { return std::round(place * ratio) / ratio; };
    return {QPointF(snap(area.left()), snap(area.top())), QPointF(snap(area.right()), snap(area.bottom()))};
}

QPixmap TimelineLane::hatching() const
{
    const auto ratio = window()->effectiveDevicePixelRatio();
    const auto wanted = QSize(hatchSize, hatchSize) * ratio;
    QSize size;
    auto image = GlyphProvider().requestImage(QStringLiteral("hatch/%1").arg(m_hatch.name()), &size, wanted);
    image.setDevicePixelRatio(ratio);
    return QPixmap::fromImage(std::move(image));
}

} // namespace stintbook
