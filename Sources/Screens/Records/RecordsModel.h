#pragma once

#include <QObject>

#include <QtQml/qqmlregistration.h>

#include "Screens/Window/ScreenContext.h"

namespace stintbook {

/// The Records screen.
class RecordsModel : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Made by the application")

public:
    explicit RecordsModel(const ScreenContext& context, QObject* parent = nullptr);

    /// Reads what is shown again.
    void refresh();

private:
    ScreenContext m_context;
};

} // namespace stintbook
