#pragma once

#include <QObject>

#include <QtQml/qqmlregistration.h>

#include "App/ClientBook.h"
#include "Screens/Window/ScreenContext.h"

namespace stintbook {

/// The first steps, shown until they were walked to their end or skipped once.
class OnboardingModel : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Made by the application")

    Q_PROPERTY(bool isDue READ isDue NOTIFY changed)
    Q_PROPERTY(bool isBusy READ isBusy NOTIFY changed)
    Q_PROPERTY(QString nameProblem READ nameProblem NOTIFY changed)
    Q_PROPERTY(QString projectProblem READ projectProblem NOTIFY changed)
    Q_PROPERTY(QString rateProblem READ rateProblem NOTIFY changed)
    Q_PROPERTY(QString problem READ problem NOTIFY changed)
    Q_PROPERTY(QString addedClient READ addedClient NOTIFY changed)
    Q_PROPERTY(QString currency READ currency NOTIFY changed)
    Q_PROPERTY(QString today READ today NOTIFY changed)

public:
    explicit OnboardingModel(const ScreenContext& context, QObject* parent = nullptr);

    bool isDue() const;
    bool isBusy() const { return m_isBusy; }
    /// Why the client was not added: by the field that has to change, or for another reason.
    const QString& nameProblem() const { return m_complaints.name; }
    const QString& projectProblem() const { return m_complaints.project; }
    const QString& rateProblem() const { return m_complaints.rate; }
    const QString& problem() const { return m_complaints.other; }
    /// Empty until one was added.
    const QString& addedClient() const { return m_addedClient; }
    /// Of rates; empty where there is none.
    const QString& currency() const { return m_currency; }
    /// What was recorded today.
    const QString& today() const { return m_today; }

    /// The client with its first project and its rate, all of it or nothing.
    Q_INVOKABLE void addClient(const QString& name, const QString& project, const QString& rate);
    Q_INVOKABLE void readCurrency();
    Q_INVOKABLE void readToday();
    /// The end, also by skipping the rest.
    Q_INVOKABLE void complete();
    void environmentChanged() { Q_EMIT changed(); }

Q_SIGNALS:
    void changed();
    void clientAdded();

private:
    struct Complaints {
        QString name;
        QString project;
        QString rate;
        QString other;
    };

    void setComplaints(const Complaints& complaints);
    /// Of nothing that was typed.
    void complain(const QString& sentence);
    Complaints complaints(const ClientBookProblem& problem, const QString& name) const;

    ScreenContext m_context;
    bool m_isBusy = false;
    Complaints m_complaints;
    QString m_addedClient;
    QString m_currency;
    QString m_today;
};

} // namespace stintbook
