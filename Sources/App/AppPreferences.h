#pragma once

#include <optional>

#include "App/AppearanceChoice.h"
#include "App/Listeners.h"
#include "App/RetentionWindow.h"
#include "Base/Instant.h"
#include "Base/Preferences.h"
#include "Export/ExportRequest.h"

namespace stintbook {

/// The user's choices with their types and defaults, read once; but for retention, of which each cleanup wants
/// to know what was chosen last. A value of the wrong type counts as absent.
///
/// An assignment holds from then on, is told to the listeners and written at once; false when it could not be
/// written, so that the next start will not know of it.
class AppPreferences {
public:
    explicit AppPreferences(PreferenceStoring& store);

    bool hasCompletedOnboarding() const { return m_hasCompletedOnboarding; }
    bool setHasCompletedOnboarding(bool hasCompleted);

    /// Titles are recorded unless their user turns them off,
    bool retainsTitleContext() const { return m_retainsTitleContext; }
    bool setRetainsTitleContext(bool retains);
    /// browser domains only after they were turned on.
    bool browserContextEnabled() const { return m_browserContextEnabled; }
    bool setBrowserContextEnabled(bool isEnabled);

    /// A start at login shows the icon alone unless its user wants the window as well.
    bool opensWindowAtLogin() const { return m_opensWindowAtLogin; }
    bool setOpensWindowAtLogin(bool opens);

    const RetentionWindow& retentionWindow() const { return m_retentionWindow; }
    bool setRetentionWindow(const RetentionWindow& window);
    bool automaticCleanupEnabled() const { return m_automaticCleanupEnabled; }
    bool setAutomaticCleanupEnabled(bool isEnabled);
    std::optional<Instant> lastAutomaticCleanup() const { return m_lastAutomaticCleanup; }
    bool setLastAutomaticCleanup(std::optional<Instant> at);
    /// Takes over these three from the store, which was refreshed: another process may have chosen them anew.
    void takeOverRetention();

    ExportMode defaultExportMode() const { return m_defaultExportMode; }
    bool setDefaultExportMode(ExportMode mode);
    /// The columns remembered for a mode, else the mode's standard ones.
    ExportFieldSet exportFields(ExportMode mode) const;
    std::optional<ExportFieldSet> rememberedExportFields(ExportMode mode) const;
    /// Absent: none are remembered any more.
    bool setExportFields(ExportMode mode, const std::optional<ExportFieldSet>& fields);

    AppearanceChoice appearance() const { return m_appearance; }
    bool setAppearance(AppearanceChoice choice);

    [[nodiscard]] Listeners::Subscription follow(std::function<void()> listener)
    {
        return m_listeners.add(std::move(listener));
    }

private:
    template <typename T>
    bool assign(T& property, T value, std::string_view key, std::optional<PreferenceValue> stored);

    PreferenceStoring& m_store;
    Listeners m_listeners;
    bool m_hasCompletedOnboarding;
    bool m_retainsTitleContext;
    bool m_browserContextEnabled;
    bool m_opensWindowAtLogin;
    RetentionWindow m_retentionWindow;
    bool m_automaticCleanupEnabled;
    std::optional<Instant> m_lastAutomaticCleanup;
    ExportMode m_defaultExportMode;
    std::optional<ExportFieldSet> m_summarizedFields;
    std::optional<ExportFieldSet> m_detailedFields;
    AppearanceChoice m_appearance;
};

} // namespace stintbook
