#pragma once

#include <QDBusVariant>
#include <QObject>
#include <optional>

namespace stintbook {

/// How the desktop wants windows to look, as its settings portal says; asked without waiting, and followed.
class DesktopAppearance : public QObject {
    Q_OBJECT

public:
    explicit DesktopAppearance(QObject* parent = nullptr);

    /// Absent where the desktop has no preference, or does not say.
    std::optional<bool> prefersDark() const { return m_prefersDark; }
    bool reducesMotion() const { return m_reducesMotion; }

Q_SIGNALS:
    void changed();

private Q_SLOTS:
    void settingChanged(const QString& group, const QString& key, const QDBusVariant& value);

private:
    void read(const QString& group, const QString& key);

    std::optional<bool> m_prefersDark;
    bool m_reducesMotion = false;
};

} // namespace stintbook
