#pragma once

#include <functional>
#include <string>

#include "App/Ports/RunningInstance.h"
#include "App/Recorder.h"

namespace stintbook {

/// What this copy answers to others from its start on: by itself for its windows and its end, and by its recorder,
/// once it has one, for what is recorded.
///
/// Confined to capture's executor, but for construction.
class RunningCopy final : public InstanceRequestHandling {
public:
    using Activation = std::function<void(ApplicationWindow window, const std::string& token)>;

    /// An empty activation: it has no window.
    explicit RunningCopy(Activation activation)
        : m_activation(std::move(activation))
    {
    }

    /// It outlives this.
    void setRecorder(Recorder& recorder) { m_recorder = &recorder; }

    InstanceStatus status() override;
    std::expected<void, std::string> pause(std::optional<Instant> until) override;
    std::expected<void, std::string> resume() override;
    void deleteActivity(const ActivityDataScope& scope, Reply<DeletedActivity> reply,
                        DeletionProgress progress) override;
    void flush(Reply<void> reply) override;
    bool activate(ApplicationWindow window, const std::string& activationToken) override;
    void quit() override;

private:
    Activation m_activation;
    Recorder* m_recorder = nullptr;
};

} // namespace stintbook
