#pragma once

#include <QMenu>
#include <QObject>
#include <QSystemTrayIcon>
#include <array>
#include <functional>

#include "App/AppEnvironment.h"
#include "App/MenuBarState.h"

namespace stintbook {

/// The application's icon among the desktop's status icons, and its menu. To be made only while something shows
/// such icons: one that is made before never appears.
class StatusItem : public QObject {
    Q_OBJECT

public:
    /// The environment outlives the item.
    StatusItem(AppEnvironment& environment, std::function<CalendarContext()> calendar,
               QObject* parent = nullptr);
    ~StatusItem() override;
    StatusItem(const StatusItem&) = delete;
    StatusItem& operator=(const StatusItem&) = delete;

    void environmentChanged();

Q_SIGNALS:
    void reviewWanted();
    void settingsWanted();
    void quitWanted();

private:
    void act(menubar::Row row);
    void activated(QSystemTrayIcon::ActivationReason reason);

    AppEnvironment& m_environment;
    std::function<CalendarContext()> m_calendar;
    QMenu m_menu;
    QMenu m_lengths;
    QAction* m_status;
    /// By row.
    std::array<QAction*, 5> m_rows{};
    QSystemTrayIcon m_icon;
    QString m_iconName;
};

} // namespace stintbook
