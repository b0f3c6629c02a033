#pragma once

#include <memory>
#include <optional>
#include <string>

#include "Base/Decimal.h"
#include "Domain/LocalDay.h"
#include "Export/ExportDocumentModel.h"
#include "Export/Timesheet/ExportRegion.h"

namespace stintbook {

/// Dates, hours and money of one document as its reader's region writes them.
class TimesheetSpelling {
public:
    TimesheetSpelling(const ExportDocumentModel& document, const ExportRegion& region);
    ~TimesheetSpelling();

    /// "Nov 16, 2026".
    std::string date(CivilDate date) const;
    /// "7.50 h": in hundredths of an hour, in ten thousandths in a document that has a line for which these
    /// are too coarse.
    std::string hours(const Decimal& hours) const;
    /// A plain number where the document has no currency.
    std::string rate(const Decimal& rate) const;
    /// A dash where the document has no currency.
    std::string amount(const Decimal& amount) const;

    /// In place of an amount that is not known.
    static constexpr const char* unavailable = "—";

private:
    struct Formats;

    std::unique_ptr<const Formats> m_formats;
};

Decimal hoursOf(const Decimal& seconds);

} // namespace stintbook
