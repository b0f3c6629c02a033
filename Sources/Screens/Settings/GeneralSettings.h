#pragma once

#include <QObject>
#include <memory>

#include <QtQml/qqmlregistration.h>

#include "Screens/Window/Errands.h"
#include "Screens/Window/ScreenContext.h"

namespace stintbook {

/// What happens at login.
class GeneralSettings : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Made by the application")

    Q_PROPERTY(bool startsAtLogin READ startsAtLogin NOTIFY changed)
    Q_PROPERTY(QString loginProblem READ loginProblem NOTIFY changed)
    Q_PROPERTY(bool opensWindowAtLogin READ opensWindowAtLogin NOTIFY changed)

public:
    explicit GeneralSettings(const ScreenContext& context, QObject* parent = nullptr);

    bool startsAtLogin() const { return m_login.isEnabled; }
    const QString& loginProblem() const { return m_login.problem; }
    bool opensWindowAtLogin() const;

    Q_INVOKABLE void setStartsAtLogin(bool starts);
    Q_INVOKABLE void setOpensWindowAtLogin(bool opens);
    /// Looks again: the desktop's own settings change it, too.
    void refresh();

Q_SIGNALS:
    void changed();

private:
    struct Registration;
    struct Login {
        bool isEnabled = false;
        QString problem;
    };

    template <typename Work> void ask(Work work);

    ScreenContext m_context;
    Login m_login;
    /// Belongs to the errands' thread.
    std::shared_ptr<Registration> m_registration;
    Errands m_errands;
};

} // namespace stintbook
