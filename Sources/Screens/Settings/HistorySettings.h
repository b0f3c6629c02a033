#pragma once

#include <QAbstractItemModel>
#include <QObject>
#include <optional>
#include <string>

#include <QtQml/qqmlregistration.h>

#include "App/HistoryRetention.h"
#include "Screens/Models/RowModel.h"
#include "Screens/Window/ScreenContext.h"

namespace stintbook {

/// A window to choose, by its number of days; 0 keeps history until it is deleted.
struct RetentionRow {
    qint64 id = 0;
    QString name;

    friend bool operator==(const RetentionRow&, const RetentionRow&) = default;
};

/// How long recorded history is kept, and what of it is to be deleted. Nothing is, before what exactly is meant was
/// shown and confirmed.
class HistorySettings : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Made by the application")

    Q_PROPERTY(QAbstractItemModel* windows READ windows CONSTANT)
    Q_PROPERTY(int window READ window NOTIFY changed)
    Q_PROPERTY(QString windowProblem READ windowProblem NOTIFY changed)
    Q_PROPERTY(QString changeTitle READ changeTitle NOTIFY changeProposed)
    Q_PROPERTY(QString changeText READ changeText NOTIFY changeProposed)
    Q_PROPERTY(bool cleansAutomatically READ cleansAutomatically NOTIFY changed)
    Q_PROPERTY(QString lastCleanup READ lastCleanup NOTIFY changed)
    Q_PROPERTY(bool isDeleting READ isDeleting NOTIFY changed)
    Q_PROPERTY(double progress READ progress NOTIFY changed)
    Q_PROPERTY(QString deletionProblem READ deletionProblem NOTIFY changed)
    Q_PROPERTY(QString outcome READ outcome NOTIFY changed)

public:
    explicit HistorySettings(const ScreenContext& context, QObject* parent = nullptr);

    QAbstractItemModel* windows() { return &m_windows; }
    /// The place of the present one.
    int window() const;
    const QString& windowProblem() const { return m_windowProblem; }
    const QString& changeTitle() const { return m_changeTitle; }
    const QString& changeText() const { return m_changeText; }
    bool cleansAutomatically() const;
    QString lastCleanup() const;
    bool isDeleting() const { return m_isDeleting; }
    /// From 0 to 1.
    double progress() const { return m_progress; }
    const QString& deletionProblem() const { return m_deletionProblem; }
    /// What was done last.
    const QString& outcome() const { return m_outcome; }

    /// Proposes the change where it would remove something, and makes it otherwise.
    Q_INVOKABLE void chooseWindow(int row);
    Q_INVOKABLE void confirmChange();
    Q_INVOKABLE void cancelChange();
    Q_INVOKABLE void setCleansAutomatically(bool cleans);

    /// What exactly the days, each as "2026-11-20", are; empty where they are no range.
    Q_INVOKABLE QString scopeOfRange(const QString& from, const QString& through) const;
    /// The title and the text to confirm.
    Q_INVOKABLE QStringList confirmationOfRange(const QString& from, const QString& through) const;
    Q_INVOKABLE QStringList confirmationOfAll() const;
    Q_INVOKABLE void deleteRange(const QString& from, const QString& through);
    Q_INVOKABLE void deleteAll();
    Q_INVOKABLE void dismiss();
    void environmentChanged();

Q_SIGNALS:
    void changed();
    /// Something would be removed: the change has to be confirmed.
    void changeProposed();

private:
    std::optional<ActivityDeletionRequest> requestOf(const QString& from, const QString& through) const;
    void showWindows();
    void propose(const RetentionChangeRequest& change);
    void applyChange(const RetentionChangeRequest& change);
    void remove(const ActivityDeletionRequest& request);
    void begin();
    void end(const QString& outcome, const QString& problem);
    DeletionProgress shownProgress();

    ScreenContext m_context;
    RowModel<RetentionRow> m_windows;
    std::optional<RetentionChangeRequest> m_change;
    QString m_changeTitle;
    QString m_changeText;
    QString m_windowProblem;
    bool m_isDeleting = false;
    double m_progress = 0;
    QString m_deletionProblem;
    QString m_outcome;
};

} // namespace stintbook
