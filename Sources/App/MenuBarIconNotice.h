#pragma once

#include <functional>
#include <memory>
#include <optional>

#include "App/Listeners.h"
#include "App/Ports/MenuBarIconLocating.h"
#include "Base/TimeSource.h"

namespace stintbook {

/// Whether the review window says that the icon cannot be seen, so that capture is not taken for stopped. An
/// icon that is gone for a moment only is not worth a notice.
///
/// Without the window nobody would see the notice, and nothing is looked at.
class MenuBarIconNotice {
public:
    /// So long the icon has to be gone,
    static constexpr Seconds patience{10};
    /// and so often it is looked for.
    static constexpr Seconds interval{60};

    /// All outlive the notice.
    struct Collaborators {
        const MenuBarIconLocating& locator;
        const ReviewWindowSourcing& reviewWindow;
        const TimeSource& clock;
        Timers& wake;
    };

    explicit MenuBarIconNotice(Collaborators collaborators)
        : m_collaborators(collaborators)
    {
    }

    bool isShown() const { return m_isShown; }
    /// To be called when the window, a display or the place of the icons has changed.
    void evaluate();

    [[nodiscard]] Listeners::Subscription follow(std::function<void()> listener)
    {
        return m_listeners.add(std::move(listener));
    }

private:
    bool isIconDrawn() const;
    void show(bool isShown);

    Collaborators m_collaborators;
    bool m_isShown = false;
    /// Since when the icon has been found not drawn.
    std::optional<Instant> m_heldSince;
    std::unique_ptr<Timers::Scheduled> m_next;
    Listeners m_listeners;
};

} // namespace stintbook
