#pragma once

#include <functional>
#include <memory>
#include <optional>

#include "Base/Executor.h"
#include "Base/TimeSource.h"
#include "Capture/AccessibilityTrustProbing.h"
#include "Domain/CaptureStatus.h"

namespace stintbook {

/// Asks again and again whether accessibility is granted, and says when the answer changes.
///
/// Confined to capture's executor; the probe, which blocks, runs on the accessibility queue alone.
class AccessibilityPermissionMonitor {
public:
    using Follower = std::function<void(CapturePermissionState)>;

    struct Collaborators {
        Executor& capture;
        Timers& timers;
        Confined<AccessibilityTrustProbing> probe;
        Seconds pollInterval;
    };

    explicit AccessibilityPermissionMonitor(Collaborators collaborators)
        : m_collaborators(std::move(collaborators))
    {
    }

    /// The first answer comes as soon as the probe has it, also when it is the initial `notGranted`; from
    /// then on each change.
    void follow(Follower follower);
    void stop();
    /// Shows the system's prompt, or switches accessibility on where its user has just agreed.
    void prompt();

    CapturePermissionState state() const { return m_state; }

private:
    void probe(TrustPrompt prompt);
    void answered(bool isTrusted);

    Collaborators m_collaborators;
    Follower m_follower;
    CapturePermissionState m_state = CapturePermissionState::notGranted;
    bool m_hasAnswered = false;
    bool m_hasPrompted = false;
    bool m_wasGranted = false;
    bool m_isProbing = false;
    std::unique_ptr<Timers::Scheduled> m_poll;
    std::shared_ptr<const bool> m_isAlive = std::make_shared<const bool>(true);
};

} // namespace stintbook
