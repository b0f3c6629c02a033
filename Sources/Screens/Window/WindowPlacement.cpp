#include "Screens/Window/WindowPlacement.h"

#include <QRegularExpression>
#include <algorithm>

namespace stintbook {

std::optional<WindowPlacement> WindowPlacement::parse(const QString& text)
{
    static const QRegularExpression form(
        QStringLiteral("^(\\d{1,5})x(\\d{1,5})(?:\\+(-?\\d{1,5})\\+(-?\\d{1,5}))?( maximized)?$"));
    const auto match = form.match(text);
    if (!match.hasMatch())
        return std::nullopt;
    WindowPlacement placement;
    placement.size = {match.captured(1).toInt(), match.captured(2).toInt()};
    if (match.capturedLength(3) > 0)
        placement.position = {match.captured(3).toInt(), match.captured(4).toInt()};
    placement.isMaximized = match.capturedLength(5) > 0;
    return placement;
}

QString WindowPlacement::text() const
{
    auto text = QStringLiteral("%1x%2").arg(size.width()).arg(size.height());
    if (position)
        text += QStringLiteral("+%1+%2").arg(position->x()).arg(position->y());
    return isMaximized ? text + QStringLiteral(" maximized") : text;
}

WindowPlacement WindowPlacement::within(const QRect& available, QSize least) const
{
    auto placed = *this;
    placed.size = size.expandedTo(least).boundedTo(available.size());
    if (position) {
        const QPoint farthest(available.right() + 1 - placed.size.width(),
                              available.bottom() + 1 - placed.size.height());
        placed.position = {std::clamp(position->x(), available.left(), farthest.x()),
                           std::clamp(position->y(), available.top(), farthest.y())};
    }
    return placed;
}

} // namespace stintbook
