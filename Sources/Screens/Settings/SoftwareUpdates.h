#pragma once

#include <QObject>
#include <memory>
#include <optional>
#include <stop_token>

#include <QtQml/qqmlregistration.h>

#include "App/Ports/SoftwareUpdating.h"
#include "Screens/Window/Errands.h"
#include "Screens/Window/ScreenContext.h"

namespace stintbook {

/// Whether there is a newer version, and having it installed.
class SoftwareUpdates : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Made by the application")

    Q_PROPERTY(QString sentence READ sentence NOTIFY changed)
    Q_PROPERTY(bool isBusy READ isBusy NOTIFY changed)
    Q_PROPERTY(bool isInstalling READ isInstalling NOTIFY changed)
    Q_PROPERTY(double progress READ progress NOTIFY changed)
    Q_PROPERTY(bool isAvailable READ isAvailable NOTIFY changed)

public:
    SoftwareUpdates(const ScreenContext& context, std::shared_ptr<SoftwareUpdating> updating,
                    QObject* parent = nullptr);
    /// What is being asked ends.
    ~SoftwareUpdates() override;
    SoftwareUpdates(const SoftwareUpdates&) = delete;
    SoftwareUpdates& operator=(const SoftwareUpdates&) = delete;

    /// What is known, or being done; empty before the first check.
    QString sentence() const;
    bool isBusy() const { return m_state == State::checking || m_state == State::installing; }
    bool isInstalling() const { return m_state == State::installing; }
    double progress() const { return m_progress; }
    /// Whether a newer version can be installed.
    bool isAvailable() const { return m_update && !isBusy(); }

    Q_INVOKABLE void check();
    Q_INVOKABLE void install();

Q_SIGNALS:
    void changed();

private:
    enum class State { unknown, checking, upToDate, available, installing, installed, failed };

    void show(State state);
    void fail(const SoftwareUpdateProblem& problem);

    ScreenContext m_context;
    std::shared_ptr<SoftwareUpdating> m_updating;
    State m_state = State::unknown;
    std::optional<SoftwareUpdate> m_update;
    QString m_problem;
    double m_progress = 0;
    std::stop_source m_stop;
    Errands m_errands;
};

} // namespace stintbook
