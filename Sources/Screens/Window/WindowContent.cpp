#include "Screens/Window/WindowContent.h"

#include <utility>

namespace stintbook {

WindowContent::WindowContent(const ScreenContext& context)
    : m_context(context)
    , m_appearance(context.environment.preferences())
    , m_shell(context)
    , m_review(context)
    , m_records(context)
    , m_clients(context)
    , m_rules(context)
    , m_settings(context)
    , m_onboarding(context)
{
    environmentChanged();
}

QVariantMap WindowContent::properties()
{
    return {
        {"appearance", QVariant::fromValue(&m_appearance)}, {"shell", QVariant::fromValue(&m_shell)},
        {"review", QVariant::fromValue(&m_review)},         {"edits", QVariant::fromValue(&m_edits)},
        {"records", QVariant::fromValue(&m_records)},       {"clients", QVariant::fromValue(&m_clients)},
        {"rules", QVariant::fromValue(&m_rules)},           {"settings", QVariant::fromValue(&m_settings)},
        {"onboarding", QVariant::fromValue(&m_onboarding)}};
}

void WindowContent::environmentChanged()
{
    m_shell.environmentChanged();
    m_settings.environmentChanged();
    m_onboarding.environmentChanged();
    refreshWhatIsOutdated();
}

void WindowContent::setShown(bool isShown)
{
    m_isShown = isShown;
    refreshWhatIsOutdated();
}

void WindowContent::refreshWhatIsOutdated()
{
    const auto revision = m_context.environment.activityDataRevision();
    if (!m_isShown || m_context.environment.store() == nullptr
        || std::exchange(m_shownRevision, revision) == revision)
        return;
    m_shell.refresh();
    m_review.refresh();
    m_records.refresh();
    m_clients.refresh();
    m_rules.refresh();
    m_settings.refresh();
}

} // namespace stintbook
