#pragma once

#include <optional>
#include <string>

#include "Base/Decimal.h"
#include "Base/Instant.h"
#include "Billing/RoundingPolicy.h"

namespace stintbook {

/// One included reviewed item, priced. Names are those at export time.
struct ExportLine {
    std::string dayID;
    Instant dayStart;
    std::string timeZoneIdentifier;
    Instant start;
    Instant end;
    std::string clientName;
    std::string projectName;
    std::optional<std::string> description;
    /// Whole seconds.
    Decimal actualSeconds;
    Decimal billedSeconds;
    bool isBillable = true;
    std::optional<Decimal> hourlyRate;
    /// Absent for non-billable lines and for billable ones without a rate. Without a currency too it is
    /// here, but shown to nobody.
    std::optional<Decimal> amount;
    std::optional<std::string> currencyCode;
    RoundingPolicy rounding = RoundingPolicy::exact;

    bool isUnpriced() const { return isBillable && !amount; }

    friend bool operator==(const ExportLine&, const ExportLine&) = default;
};

} // namespace stintbook
