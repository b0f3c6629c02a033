#pragma once

#include <optional>

#include "Base/Instant.h"
#include "Base/Preferences.h"
#include "Export/ExportRequest.h"

namespace stintbook {

/// The user's choices with their types and defaults. A value of the wrong type counts as absent; every
/// assignment is stored at once.
class AppPreferences {
public:
    explicit AppPreferences(PreferenceStoring& store);

    /// Titles are recorded unless their user turns them off,
    bool retainsTitleContext() const { return m_retainsTitleContext; }
    bool setRetainsTitleContext(bool retains);
    /// browser domains only after they were turned on.
    bool browserContextEnabled() const { return m_browserContextEnabled; }
    bool setBrowserContextEnabled(bool isEnabled);

    ExportMode defaultExportMode() const { return m_defaultExportMode; }
    /// The columns remembered for a mode, else the mode's standard ones.
    ExportFieldSet exportFields(ExportMode mode) const;

private:
    PreferenceStoring& m_store;
    bool m_retainsTitleContext;
    bool m_browserContextEnabled;
    ExportMode m_defaultExportMode;
    std::optional<ExportFieldSet> m_summarizedFields;
    std::optional<ExportFieldSet> m_detailedFields;
};

} // namespace stintbook
