#pragma once

#include <QObject>
#include <QStringList>

#include <QtQml/qqmlregistration.h>

#include "Screens/Review/ReviewModel.h"

namespace stintbook {

/// What can be done with the selected work of a day, and with the day.
class ReviewEdits : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Made by the application")

    /// What earlier work was described as, the latest first; filled by `readDescriptions`.
    Q_PROPERTY(QStringList descriptions READ descriptions NOTIFY descriptionsChanged)

public:
    /// The model outlives its edits.
    explicit ReviewEdits(ReviewModel& review, QObject* parent = nullptr);

    const QStringList& descriptions() const { return m_descriptions; }

    /// A state of `Qt::CheckState`; half checked leaves it to the project.
    Q_INVOKABLE void assign(const QString& clientID, const QString& projectID,
                            int billable = Qt::PartiallyChecked);
    Q_INVOKABLE void setBillable(bool isBillable);
    Q_INVOKABLE void confirm();
    Q_INVOKABLE void ignore();
    Q_INVOKABLE void restore();
    Q_INVOKABLE void describe(const QString& words);
    Q_INVOKABLE void splitAt(double secondOfDay);
    /// The same, asked for by a sheet: told by `accepted`, or `refused`.
    Q_INVOKABLE void splitBySheet(double secondOfDay);
    /// The selected work; with one alone, it and what follows.
    Q_INVOKABLE void merge();
    Q_INVOKABLE void markReady();
    Q_INVOKABLE void undo();
    Q_INVOKABLE void redo();
    /// Work that nobody recorded, in seconds of the day. Told by `accepted`, or `refused`.
    Q_INVOKABLE void addWork(double start, double end, const QString& clientID, const QString& projectID,
                             int billable, const QString& description);
    /// The selected idle time. Told in the same way.
    Q_INVOKABLE void convertIdle(const QString& clientID, const QString& projectID, int billable,
                                 const QString& description);
    /// A project, and its client where that is new too. Told by `targetCreated`, or `targetRefused`.
    Q_INVOKABLE void createTarget(const QString& clientID, const QString& clientName,
                                  const QString& projectName);
    Q_INVOKABLE void readDescriptions();

Q_SIGNALS:
    /// What a sheet asked for was done;
    void accepted();
    /// or was not, which is shown beside what was typed.
    void refused(const QString& sentence);
    void targetCreated(const QString& clientID, const QString& projectID);
    void targetRefused(const QString& sentence);
    void descriptionsChanged();

private:
    /// An edit of the selected work, once there is some.
    template <typename Work> std::optional<ReviewModel::Edit> onSelected(Work work) const;
    template <typename Work> void editSelected(Work work);
    void editBySheet(ReviewModel::Edit edit);

    ReviewModel& m_review;
    QStringList m_descriptions;
};

} // namespace stintbook
