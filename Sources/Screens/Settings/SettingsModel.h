#pragma once

#include <QObject>

#include <QtQml/qqmlregistration.h>

#include "Screens/Window/ScreenContext.h"

namespace stintbook {

/// The settings window.
class SettingsModel : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Made by the application")

public:
    explicit SettingsModel(const ScreenContext& context, QObject* parent = nullptr);

    /// The environment is not as it was.
    void environmentChanged();

private:
    ScreenContext m_context;
};

} // namespace stintbook
