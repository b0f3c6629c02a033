#include "Capture/AccessibilityPermissionMonitor.h"

#include <utility>

namespace stintbook {

void AccessibilityPermissionMonitor::follow(Follower follower)
{
    m_follower = std::move(follower);
    m_poll = m_collaborators.timers.every(m_collaborators.pollInterval, [this] { probe(TrustPrompt::none); });
    probe(TrustPrompt::none);
}

void AccessibilityPermissionMonitor::stop()
{
    m_poll.reset();
    m_follower = nullptr;
}

void AccessibilityPermissionMonitor::prompt()
{
    m_hasPrompted = true;
    m_isProbing = false; // the answer to a probe under way is older than the question
    probe(TrustPrompt::shown);
}

void AccessibilityPermissionMonitor::probe(TrustPrompt prompt)
{
    if (std::exchange(m_isProbing, true))
        return;
    m_collaborators.probe.ask([prompt](AccessibilityTrustProbing& probe) { return probe.isTrusted(prompt); },
                              m_collaborators.capture,
                              [this, isAlive = std::weak_ptr(m_isAlive)](bool isTrusted) {
                                  if (!isAlive.expired())
                                      answered(isTrusted);
                              });
}

void AccessibilityPermissionMonitor::answered(bool isTrusted)
{
    m_isProbing = false;
    if (!m_follower)
        return;
    m_wasGranted = m_wasGranted || isTrusted;
    const auto state = isTrusted ? CapturePermissionState::granted
        : m_wasGranted           ? CapturePermissionState::revoked
        : m_hasPrompted          ? CapturePermissionState::awaitingUserAction
                                 : CapturePermissionState::notGranted;
    if (std::exchange(m_hasAnswered, true) && state == m_state)
        return;
    m_state = state;
    m_follower(state);
}

} // namespace stintbook
