#include "Screens/Settings/CaptureSettings.h"

#include <algorithm>
#include <set>

#include "Capture/SupportedBrowser.h"
#include "Platform/ApplicationIdentities.h"

namespace stintbook {

namespace {

/// The names of the supported browsers that are installed, in their order.
std::vector<std::string> installedBrowsers()
{
    std::set<std::string> installed;
    for (const auto& application : ApplicationIdentities().installed()) {
        if (const auto* browser = supportedBrowser(application.bundleIdentifier))
            installed.emplace(browser->displayName);
    }
    std::vector<std::string> names;
    for (const auto& browser : supportedBrowsers()) {
        const std::string name(browser.displayName);
        if (installed.contains(name) && std::ranges::find(names, name) == names.end())
            names.push_back(name);
    }
    return names;
}

} // namespace

CaptureSettings::CaptureSettings(const ScreenContext& context, QObject* parent)
    : QObject(parent)
    , m_context(context)
    , m_browsers({RowModel<BrowserRow>::role("name", &BrowserRow::name),
                  RowModel<BrowserRow>::role("state", &BrowserRow::state),
                  RowModel<BrowserRow>::role("isActive", &BrowserRow::isActive)})
    , m_errands("browsers", context.main)
{
}

bool CaptureSettings::recordsTitles() const
{
    return m_context.environment.preferences().retainsTitleContext();
}

bool CaptureSettings::recordsDomains() const
{
    return m_context.environment.preferences().browserContextEnabled();
}

QString CaptureSettings::domainsState() const
{
    switch (m_context.environment.browserContextState()) {
    case BrowserContextState::off:
        return tr("Off");
    case BrowserContextState::active:
        return tr("Active");
    case BrowserContextState::needsPermission:
        return tr("Needs accessibility");
    case BrowserContextState::denied:
        return tr("Accessibility was turned off");
    case BrowserContextState::unavailable:
        break;
    }
    return tr("Unavailable");
}

QString CaptureSettings::accessibility() const
{
    if (!m_context.environment.isCapturing())
        return tr("Nothing is recorded at present, so it is not known whether accessibility is on.");
    switch (m_context.environment.permissionState()) {
    case CapturePermissionState::granted:
        return tr("Accessibility is on: window titles and browser domains can be read.");
    case CapturePermissionState::revoked:
        return tr(
            "Accessibility was turned off meanwhile. Only applications are recorded, without titles and "
            "domains.");
    case CapturePermissionState::notGranted:
    case CapturePermissionState::awaitingUserAction:
        break;
    }
    return tr("Accessibility is off. Only applications are recorded, without titles and domains.");
}

bool CaptureSettings::hasAccessibility() const
{
    return m_context.environment.permissionState() == CapturePermissionState::granted;
}

bool CaptureSettings::canAskForAccessibility() const
{
    return m_context.environment.isCapturing() && !hasAccessibility();
}

bool CaptureSettings::isAsking() const
{
    return m_context.environment.isResolvingBrowserContext();
}

void CaptureSettings::setRecordsTitles(bool records)
{
    m_context.environment.preferences().setRetainsTitleContext(records);
}

void CaptureSettings::setRecordsDomains(bool records)
{
    m_context.environment.preferences().setBrowserContextEnabled(records);
}

void CaptureSettings::askForAccessibility()
{
    m_context.environment.resolveBrowserContext();
}

void CaptureSettings::refresh()
{
    m_errands.run(this, installedBrowsers, [this](std::vector<std::string> installed) {
        m_installed = std::move(installed);
        m_knowsBrowsers = true;
        environmentChanged();
    });
}

void CaptureSettings::environmentChanged()
{
    showBrowsers();
    Q_EMIT changed();
}

void CaptureSettings::showBrowsers()
{
    const bool isActive = m_context.environment.browserContextState() == BrowserContextState::active;
    std::vector<BrowserRow> rows;
    for (const auto& name : m_installed)
        rows.push_back({.id = name, .name = text(name), .state = domainsState(), .isActive = isActive});
    m_browsers.show(std::move(rows));
}

} // namespace stintbook
