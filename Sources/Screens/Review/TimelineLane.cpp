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
constexpr double space = 1;
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
    Pieces work;
    Pieces spans;
    if (const auto* view = m_review->view()) {
        work.reserve(view->subjects.size());
        for (const auto& row : view->subjects) {
            work.push_back({.id = row.id,
                            .start = row.start,
                            .end = row.end,
                            .color = QColor(row.color),
                            .isIgnored = row.state == text(rawValue(SubjectState::ignored)),
                            .isConflicting = row.state == text(rawValue(SubjectState::conflicting)),
                            .title = row.title,
                            .times = row.times,
                            .duration = row.duration,
                            .client = row.client.isEmpty() ? tr("unassigned") : row.client});
        }
        spans.reserve(view->spans.size());
        for (const auto& row : view->spans) {
            spans.push_back({.id = row.id,
                             .kind = row.isIdle ? Kind::idle : Kind::gap,
                             .start = row.start,
                             .end = row.end,
                             .title = row.title,
                             .times = row.times,
                             .duration = row.duration});
        }
    }
    if (work == m_work && spans == m_spans)
        return;
    m_work = std::move(work);
    m_spans = std::move(spans);
    m_byTime.clear();
    for (const auto* pieces : {&m_work, &m_spans}) {
        for (const auto& piece : *pieces)
            m_byTime.push_back(&piece);
    }
    std::ranges::sort(m_byTime, {}, [](const Piece* piece) { return std::pair(piece->start, piece->id); });
    Q_EMIT rowsChanged();
    settle();
}

void TimelineLane::settle()
{
    const auto chosen = m_review == nullptr ? std::nullopt : m_review->selection().current();
    const auto found =
        std::ranges::find_if(m_byTime, [&](const Piece* piece) { return piece->id == chosen; });
    const auto current = found == m_byTime.end() ? TimelinePlace() : place(**found);
    const auto value = found == m_byTime.end() ? 0 : static_cast<int>(found - m_byTime.begin()) + 1;
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
        m_review->select(text(m_byTime[static_cast<std::size_t>(value) - 1]->id));
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

QRectF TimelineLane::area(const Piece& piece) const
{
    const auto left = xOf(piece.start);
    auto width = xOf(piece.end) - left;
    if (piece.kind != Kind::work)
        width = std::max(leastSpanWidth, width);
    else
        width = std::max(leastWorkWidth, width > leastSpacedWidth ? width - space : width);
    return {left, m_inset, width, height() - 2 * m_inset};
}

TimelinePlace TimelineLane::place(const Piece& piece) const
{
    const auto lies = area(piece);
    const bool isWork = piece.kind == Kind::work;
    return {.id = text(piece.id),
            .name = isWork ? named(piece.times, piece.title, piece.client)
                           : named(piece.title, piece.times, piece.duration),
            .hint = isWork ? hinted(piece.times, piece.duration, piece.title)
                           : hinted(piece.title, piece.times, piece.duration),
            .isWork = isWork,
            .start = piece.start,
            .end = piece.end,
            .x = lies.x(),
            .width = lies.width()};
}

TimelinePlace TimelineLane::placeAt(double x) const
{
    for (const auto* pieces : {&m_work, &m_spans}) {
        const auto after =
            std::ranges::upper_bound(*pieces, x, {}, [this](const Piece& piece) { return xOf(piece.start); });
        // What began last lies above what is around it.
        for (auto piece = after; piece != pieces->begin();) {
            --piece;
            if (x < area(*piece).right())
                return place(*piece);
        }
    }
    return {};
}

bool TimelineLane::isSeen(const Piece& piece) const
{
    const auto lies = area(piece);
    return lies.right() + frameReach > 0 && lies.left() - frameReach < width();
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
    const auto isShown = [this](const Piece& piece) { return isSeen(piece); };
    const auto hatched = hatching();
    for (const auto& piece : m_spans | std::views::filter(isShown)) {
        const auto rectangle = snapped(area(piece));
        if (piece.kind == Kind::idle) {
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
    const auto isShown = [this](const Piece& piece) { return isSeen(piece); };
    for (const auto& piece : m_work | std::views::filter(isShown)) {
        const auto rectangle = snapped(area(piece));
        const auto radius = std::min(corner, rectangle.width() / 3);
        painter.setPen(Qt::NoPen);
        painter.setBrush(piece.color.isValid() ? piece.color : m_anonymous);
        painter.setOpacity(piece.isIgnored ? ignoredOpacity : 1);
        painter.drawRoundedRect(rectangle, radius, radius);
        painter.setOpacity(1);
        if (piece.isConflicting)
            paintFrame(painter, rectangle, radius, m_warning);
    }
}

void TimelineLane::paintFrames(QPainter& painter) const
{
    const auto isShown = [this](const Piece& piece) { return isSeen(piece); };
    const auto& chosen = m_review->selection();
    for (const auto& piece : m_spans | std::views::filter(isShown)) {
        if (chosen.contains(piece.id))
            paintFrame(painter, snapped(area(piece)), corner, m_frame);
    }
    for (const auto& piece : m_work | std::views::filter(isShown)) {
        if (chosen.contains(piece.id))
            paintFrame(painter,
                       snapped(area(piece)).adjusted(-frameReach, -frameReach, frameReach, frameReach),
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
