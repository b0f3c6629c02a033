#pragma once

#include <QObject>

#include <QtQml/qqmlregistration.h>

#include "Screens/Settings/AboutSettings.h"
#include "Screens/Settings/CaptureSettings.h"
#include "Screens/Settings/DataCopies.h"
#include "Screens/Settings/ExclusionSettings.h"
#include "Screens/Settings/GeneralSettings.h"
#include "Screens/Settings/HistorySettings.h"
#include "Screens/Settings/LedgerSettings.h"
#include "Screens/Settings/SoftwareUpdates.h"
#include "Screens/Window/ScreenContext.h"

namespace stintbook {

/// The settings window: what each of its panes works with.
class SettingsModel : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Made by the application")

    Q_PROPERTY(GeneralSettings* general READ general CONSTANT)
    Q_PROPERTY(CaptureSettings* capture READ capture CONSTANT)
    Q_PROPERTY(ExclusionSettings* exclusions READ exclusions CONSTANT)
    Q_PROPERTY(LedgerSettings* ledger READ ledger CONSTANT)
    Q_PROPERTY(HistorySettings* history READ history CONSTANT)
    Q_PROPERTY(DataCopies* copies READ copies CONSTANT)
    Q_PROPERTY(AboutSettings* about READ about CONSTANT)
    Q_PROPERTY(SoftwareUpdates* updates READ updates CONSTANT)
    Q_PROPERTY(QString problem READ problem NOTIFY problemChanged)

public:
    explicit SettingsModel(const ScreenContext& context, QObject* parent = nullptr);

    GeneralSettings* general() { return &m_general; }
    CaptureSettings* capture() { return &m_capture; }
    ExclusionSettings* exclusions() { return &m_exclusions; }
    LedgerSettings* ledger() { return &m_ledger; }
    HistorySettings* history() { return &m_history; }
    DataCopies* copies() { return &m_copies; }
    AboutSettings* about() { return &m_about; }
    SoftwareUpdates* updates() { return &m_updates; }

    /// Why what is chosen will be forgotten; empty where it will not.
    const QString& problem() const { return m_problem; }
    void setChoicesKept(bool areKept);
    Q_INVOKABLE void dismissProblem();

    /// The window is there: from now on stored data is followed.
    Q_INVOKABLE void open();
    Q_INVOKABLE void close() { m_isOpen = false; }
    /// The environment is not as it was.
    void environmentChanged();
    /// Stored data is not as it was.
    void refresh();

Q_SIGNALS:
    void problemChanged();

private:
    QString m_problem;
    bool m_isOpen = false;
    GeneralSettings m_general;
    CaptureSettings m_capture;
    ExclusionSettings m_exclusions;
    LedgerSettings m_ledger;
    HistorySettings m_history;
    DataCopies m_copies;
    AboutSettings m_about;
    SoftwareUpdates m_updates;
};

} // namespace stintbook
