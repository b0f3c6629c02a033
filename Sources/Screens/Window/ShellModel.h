#pragma once

#include <QObject>

#include <QtQml/qqmlregistration.h>

#include "Screens/Window/ScreenContext.h"

namespace stintbook {

/// What surrounds the screens: which of them is shown, whether work is recorded, and what is wrong with either.
class ShellModel : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Made by the application")

    Q_PROPERTY(QString page READ page WRITE setPage NOTIFY pageChanged)
    Q_PROPERTY(QString captureText READ captureText NOTIFY changed)
    Q_PROPERTY(bool isRecording READ isRecording NOTIFY changed)

public:
    explicit ShellModel(const ScreenContext& context, QObject* parent = nullptr);

    /// "review", "records", "clients" or "rules".
    const QString& page() const { return m_page; }
    void setPage(const QString& page);
    QString captureText() const;
    bool isRecording() const;

    void environmentChanged();

Q_SIGNALS:
    void pageChanged();
    void changed();

private:
    ScreenContext m_context;
    QString m_page = QStringLiteral("review");
};

} // namespace stintbook
