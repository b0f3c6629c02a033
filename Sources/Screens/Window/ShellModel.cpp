#include "Screens/Window/ShellModel.h"

#include <QLocale>
#include <utility>

#include "App/MenuBarState.h"
#include "Screens/Models/Texts.h"

namespace stintbook {

ShellModel::ShellModel(const ScreenContext& context, QObject* parent)
    : QObject(parent)
    , m_context(context)
{
}

void ShellModel::setPage(const QString& page)
{
    if (std::exchange(m_page, page) != page)
        Q_EMIT pageChanged();
}

void ShellModel::setSettingsOpen(bool isOpen)
{
    if (std::exchange(m_settingsOpen, isOpen) != isOpen)
        Q_EMIT settingsOpenChanged();
}

void ShellModel::setHelpOpen(bool isOpen)
{
    if (std::exchange(m_helpOpen, isOpen) != isOpen)
        Q_EMIT helpOpenChanged();
}

QString ShellModel::captureText() const
{
    if (const auto& problem = m_context.environment.captureProblem())
        return text(*problem);
    if (isRecording())
        return tr("Recording");
    return text(menubar::statusLine(m_context.environment.captureStatus(), m_context.calendar(),
                                    QLocale().name().toStdString()));
}

bool ShellModel::isRecording() const
{
    return m_context.environment.captureStatus().runtime.isActive();
}

void ShellModel::environmentChanged()
{
    Q_EMIT changed();
}

} // namespace stintbook
