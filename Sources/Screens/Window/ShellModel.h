#pragma once

#include <QObject>

#include <QtQml/qqmlregistration.h>

#include "Screens/Window/ScreenContext.h"

namespace stintbook {

/// What surrounds the screens: which of them is shown, whether work is recorded, and what is wrong with either.
class ShellModel : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Made by the application")

    Q_PROPERTY(QString page READ page WRITE setPage NOTIFY pageChanged)
    Q_PROPERTY(bool settingsOpen READ settingsOpen WRITE setSettingsOpen NOTIFY settingsOpenChanged)
    Q_PROPERTY(bool helpOpen READ helpOpen WRITE setHelpOpen NOTIFY helpOpenChanged)
    Q_PROPERTY(QString captureText READ captureText NOTIFY changed)
    Q_PROPERTY(bool isRecording READ isRecording NOTIFY changed)

public:
    explicit ShellModel(const ScreenContext& context, QObject* parent = nullptr);

    /// "review", "records", "clients" or "rules".
    const QString& page() const { return m_page; }
    void setPage(const QString& page);
    /// The settings window.
    bool settingsOpen() const { return m_settingsOpen; }
    void setSettingsOpen(bool isOpen);
    /// The list of keys.
    bool helpOpen() const { return m_helpOpen; }
    void setHelpOpen(bool isOpen);
    QString captureText() const;
    bool isRecording() const;

    void environmentChanged();

Q_SIGNALS:
    void pageChanged();
    void settingsOpenChanged();
    void helpOpenChanged();
    void changed();

private:
    ScreenContext m_context;
    QString m_page = QStringLiteral("review");
    bool m_settingsOpen = false;
    bool m_helpOpen = false;
};

} // namespace stintbook
