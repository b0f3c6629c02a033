#pragma once

#include <QObject>

#include <QtQml/qqmlregistration.h>

#include "Screens/Window/ScreenContext.h"

namespace stintbook {

/// The first steps.
class OnboardingModel : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Made by the application")

public:
    explicit OnboardingModel(const ScreenContext& context, QObject* parent = nullptr);

private:
    ScreenContext m_context;
};

} // namespace stintbook
