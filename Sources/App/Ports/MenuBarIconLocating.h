#pragma once

#include <vector>

namespace stintbook {

/// The application's icon among the desktop's status icons, in pixels of the whole desktop.
struct MenuBarIconWindow {
    struct Rectangle {
        int x = 0;
        int y = 0;
        int width = 0;
        int height = 0;
    };
    Rectangle frame;
    /// Whether it can be seen there.
    bool isDrawn = false;
};

class MenuBarIconLocating {
public:
    virtual ~MenuBarIconLocating() = default;
    /// None where no part of the desktop shows such icons.
    virtual std::vector<MenuBarIconWindow> windows() const = 0;
};

class ReviewWindowSourcing {
public:
    virtual ~ReviewWindowSourcing() = default;
    virtual bool isOpen() const = 0;
};

} // namespace stintbook
