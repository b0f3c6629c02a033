#pragma once

#include <QObject>
#include <QVariantList>

#include <QtQml/qqmlregistration.h>

#include "Screens/Window/ScreenContext.h"

namespace stintbook {

/// Which program this is, what it is built on, and where it keeps what it records.
class AboutSettings : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Made by the application")

    Q_PROPERTY(QString version READ version CONSTANT)
    Q_PROPERTY(QVariantList licences READ licences CONSTANT)
    Q_PROPERTY(QString storeFile READ storeFile NOTIFY changed)
    Q_PROPERTY(QString storeFolder READ storeFolder NOTIFY changed)

public:
    explicit AboutSettings(const ScreenContext& context, QObject* parent = nullptr);

    QString version() const;
    /// { name, licence } of each library.
    QVariantList licences() const;
    /// Empty while the store is not open.
    QString storeFile() const;
    QString storeFolder() const;

    Q_INVOKABLE void copyStorePath() const;
    void environmentChanged() { Q_EMIT changed(); }

Q_SIGNALS:
    void changed();

private:
    ScreenContext m_context;
};

} // namespace stintbook
