#pragma once

#include <QDBusServiceWatcher>
#include <QObject>

#include "App/Ports/MenuBarIconLocating.h"

namespace stintbook {

/// Whether some part of the desktop shows status icons: asked on the session bus without waiting, and followed.
class StatusNotifierHosts : public QObject, public MenuBarIconLocating {
    Q_OBJECT

public:
    explicit StatusNotifierHosts(QObject* parent = nullptr);

    bool isPresent() const { return m_isPresent; }
    /// Where exactly its icon stands, no program is told.
    std::vector<MenuBarIconWindow> windows() const override;

Q_SIGNALS:
    void changed();

private Q_SLOTS:
    void ask();

private:
    void setPresent(bool isPresent);

    QDBusServiceWatcher m_watcher;
    bool m_isPresent = false;
};

} // namespace stintbook
