#include "Screens/StatusItem/StatusItem.h"

#include <QLocale>
#include <algorithm>
#include <utility>

#include "Screens/Models/Texts.h"

namespace stintbook {

namespace {

using menubar::Row;

constexpr std::array allRows{Row::openReview, Row::pause, Row::resume, Row::settings, Row::quit};

QString iconName(const CaptureStatus& status)
{
    if (!status.runtime.isActive())
        return QStringLiteral("paused");
    return status.permission == CapturePermissionState::granted ? QStringLiteral("recording")
                                                                : QStringLiteral("limited");
}

} // namespace

StatusItem::StatusItem(AppEnvironment& environment, std::function<CalendarContext()> calendar,
                       QObject* parent)
    : QObject(parent)
    , m_environment(environment)
    , m_calendar(std::move(calendar))
    , m_lengths(text(title(Row::pause)))
    , m_status(m_menu.addAction(QString()))
{
    m_status->setEnabled(false);
    m_menu.addSeparator();
    for (const auto length : menubar::pauseLengths) {
        const auto* const action = m_lengths.addAction(text(menubar::title(length)));
        connect(action, &QAction::triggered, this, [this, length] { m_environment.pause(length); });
    }
    for (const auto row : allRows) {
        auto& action = m_rows.at(static_cast<std::size_t>(row));
        if (row == Row::pause) {
            action = m_menu.addMenu(&m_lengths);
            continue;
        }
        action = m_menu.addAction(text(title(row)));
        connect(action, &QAction::triggered, this, [this, row] { act(row); });
    }
    connect(&m_icon, &QSystemTrayIcon::activated, this, &StatusItem::activated);
    environmentChanged();
    m_icon.setContextMenu(&m_menu);
    m_icon.show();
}

StatusItem::~StatusItem()
{
    m_icon.hide();
}

void StatusItem::environmentChanged()
{
    const auto& status = m_environment.captureStatus();
    const auto line = text(menubar::statusLine(status, m_calendar(), QLocale().name().toStdString()));
    m_status->setText(line);
    const auto shown = menubar::rows(status.runtime);
    for (const auto row : allRows)
        m_rows.at(static_cast<std::size_t>(row))->setVisible(std::ranges::find(shown, row) != shown.end());
    m_icon.setToolTip(line);
    if (const auto name = iconName(status); std::exchange(m_iconName, name) != name)
        m_icon.setIcon(QIcon(QStringLiteral(":/qt/qml/Velloran/Icons/Status/%1.svg").arg(name)));
}

void StatusItem::act(Row row)
{
    switch (row) {
    case Row::openReview:
        return Q_EMIT reviewWanted();
    case Row::resume:
        return m_environment.resume();
    case Row::settings:
        return Q_EMIT settingsWanted();
    case Row::quit:
        return Q_EMIT quitWanted();
    case Row::pause:
        break;
    }
}

void StatusItem::activated(QSystemTrayIcon::ActivationReason reason)
{
    if (reason == QSystemTrayIcon::Trigger)
        Q_EMIT reviewWanted();
}

} // namespace stintbook
