#include "Screens/Settings/SettingsModel.h"

#include "Platform/PackageKitUpdates.h"

namespace stintbook {

SettingsModel::SettingsModel(const ScreenContext& context, QObject* parent)
    : QObject(parent)
    , m_general(context)
    , m_capture(context)
    , m_exclusions(context)
    , m_ledger(context)
    , m_history(context)
    , m_copies(context)
    , m_about(context)
    , m_updates(context, std::make_shared<PackageKitUpdates>("velloran"))
{
}

void SettingsModel::open()
{
    m_isOpen = true;
    m_general.refresh();
    m_capture.refresh();
    m_exclusions.open();
    m_ledger.refresh();
}

void SettingsModel::setChoicesKept(bool areKept)
{
    m_problem = areKept ? QString()
                        : tr("What you chose could not be saved. It holds until Velloran ends, and is saved "
                             "with the next choice that "
                             "can be.");
    Q_EMIT problemChanged();
}

void SettingsModel::dismissProblem()
{
    setChoicesKept(true);
}

void SettingsModel::environmentChanged()
{
    m_capture.environmentChanged();
    m_history.environmentChanged();
    m_about.environmentChanged();
}

void SettingsModel::refresh()
{
    if (!m_isOpen)
        return;
    m_exclusions.refresh();
    m_ledger.refresh();
}

} // namespace stintbook
