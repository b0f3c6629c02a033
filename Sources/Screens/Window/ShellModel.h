#pragma once

#include <QObject>
#include <QStringList>
#include <QVariantList>

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
    Q_PROPERTY(int reviewCount READ reviewCount NOTIFY dataChanged)

    Q_PROPERTY(QString captureText READ captureText NOTIFY changed)
    Q_PROPERTY(bool isRecording READ isRecording NOTIFY changed)
    Q_PROPERTY(bool isPaused READ isPaused NOTIFY changed)
    Q_PROPERTY(QString pauseTitle READ pauseTitle CONSTANT)
    Q_PROPERTY(QString resumeTitle READ resumeTitle CONSTANT)
    Q_PROPERTY(QVariantList pauseLengths READ pauseLengths CONSTANT)
    Q_PROPERTY(QString captureProblem READ captureProblem NOTIFY changed)

    Q_PROPERTY(bool isContextLimited READ isContextLimited NOTIFY changed)
    Q_PROPERTY(bool isAskingForAccessibility READ isAskingForAccessibility NOTIFY changed)
    Q_PROPERTY(QStringList untitledApplications READ untitledApplications NOTIFY dataChanged)

    Q_PROPERTY(QString storeProblem READ storeProblem NOTIFY changed)
    Q_PROPERTY(QString storeProblemDetail READ storeProblemDetail NOTIFY changed)
    Q_PROPERTY(QString storeRetryMessage READ storeRetryMessage NOTIFY changed)
    Q_PROPERTY(bool isRetryingStore READ isRetryingStore NOTIFY changed)

    Q_PROPERTY(bool isIconHidden READ isIconHidden NOTIFY changed)
    Q_PROPERTY(QString iconHiddenTitle READ iconHiddenTitle CONSTANT)
    Q_PROPERTY(QString iconHiddenExplanation READ iconHiddenExplanation CONSTANT)
    /// Nothing where the desktop has no settings that could be opened.
    Q_PROPERTY(QString desktopSettingsTitle READ desktopSettingsTitle CONSTANT)

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
    /// Of the last weeks' days, how many wait for their user.
    int reviewCount() const { return m_reviewCount; }

    QString captureText() const;
    bool isRecording() const;
    bool isPaused() const;
    QString pauseTitle() const;
    QString resumeTitle() const;
    /// Each with a `key` and a `name`.
    QVariantList pauseLengths() const;
    QString captureProblem() const;
    Q_INVOKABLE void pause(const QString& length);
    Q_INVOKABLE void resume();

    bool isContextLimited() const;
    bool isAskingForAccessibility() const;
    Q_INVOKABLE void turnOnAccessibility();
    /// Which have to be started again before their titles can be read.
    const QStringList& untitledApplications() const { return m_untitledApplications; }

    QString storeProblem() const;
    QString storeProblemDetail() const;
    QString storeRetryMessage() const;
    bool isRetryingStore() const;
    Q_INVOKABLE void retryStore();

    bool isIconHidden() const;
    QString iconHiddenTitle() const;
    QString iconHiddenExplanation() const;
    QString desktopSettingsTitle() const;
    Q_INVOKABLE void openDesktopSettings();
    Q_INVOKABLE void dismissIconNotice();

    void environmentChanged();
    /// What is stored is not as it was.
    void refresh();

Q_SIGNALS:
    void pageChanged();
    void settingsOpenChanged();
    void helpOpenChanged();
    void changed();
    void dataChanged();

private:
    void iconNoticeChanged();

    ScreenContext m_context;
    QString m_page = QStringLiteral("review");
    bool m_settingsOpen = false;
    bool m_helpOpen = false;
    int m_reviewCount = 0;
    QStringList m_untitledApplications;
    /// Since when titles could be read.
    std::optional<Instant> m_readableSince;
    bool m_isReading = false;
    bool m_hasChangedMeanwhile = false;
    bool m_isIconNoticeDismissed = false;
    Listeners::Subscription m_iconNotice;
};

} // namespace stintbook
