#include "App/MenuBarIconNotice.h"

#include <algorithm>
#include <utility>

namespace stintbook {

bool MenuBarIconNotice::isIconDrawn() const
{
    return std::ranges::any_of(m_collaborators.locator.windows(), &MenuBarIconWindow::isDrawn);
}

void MenuBarIconNotice::evaluate()
{
    if (!m_collaborators.reviewWindow.isOpen() || isIconDrawn()) {
        m_heldSince.reset();
        m_next.reset();
        return show(false);
    }
    const auto now = m_collaborators.clock.now();
    // A clock that was set back begins the wait anew.
    if (!m_heldSince || now < *m_heldSince)
        m_heldSince = now;
    // By the wall clock, which goes on while the machine sleeps.
    m_next = m_collaborators.wake.at(now + interval, [this] { evaluate(); });
    show(now - *m_heldSince >= patience);
}

void MenuBarIconNotice::show(bool isShown)
{
    if (std::exchange(m_isShown, isShown) != isShown)
        m_listeners.tell();
}

} // namespace stintbook
