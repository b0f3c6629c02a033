#pragma once

#include <QPoint>
#include <QRect>
#include <QSize>
#include <QString>
#include <optional>

namespace stintbook {

/// Where a window was left, as its text remembers it: "1280x820", "1280x820+40+30", "1280x820+40+30 maximized".
struct WindowPlacement {
    /// While it is not maximized, without its frame.
    QSize size;
    /// Of its frame; absent where windows do not learn of it.
    std::optional<QPoint> position;
    bool isMaximized = false;

    static std::optional<WindowPlacement> parse(const QString& text);
    QString text() const;

    /// Wholly within what is available of a screen, and no smaller than `least` unless that is.
    WindowPlacement within(const QRect& available, QSize least) const;

    friend bool operator==(const WindowPlacement&, const WindowPlacement&) = default;
};

} // namespace stintbook
