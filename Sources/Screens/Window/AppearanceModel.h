#pragma once

#include <QObject>

#include <QtQml/qqmlregistration.h>

#include "App/AppPreferences.h"
#include "Screens/Window/DesktopAppearance.h"

namespace stintbook {

/// Light or dark, and whether anything moves: as chosen here, else as the desktop wants it.
class AppearanceModel : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Made by the application")

    Q_PROPERTY(QString choice READ choice WRITE setChoice NOTIFY changed)
    Q_PROPERTY(QString scheme READ scheme NOTIFY changed)
    Q_PROPERTY(bool reducesMotion READ reducesMotion NOTIFY changed)

public:
    explicit AppearanceModel(AppPreferences& preferences, QObject* parent = nullptr);

    /// "system", "light" or "dark".
    QString choice() const;
    void setChoice(const QString& choice);
    /// "light", "dark", or nothing where only the desktop's palette tells.
    QString scheme() const;
    bool reducesMotion() const { return m_desktop.reducesMotion(); }

Q_SIGNALS:
    void changed();

private:
    AppPreferences& m_preferences;
    DesktopAppearance m_desktop;
};

} // namespace stintbook
