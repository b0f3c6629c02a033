#include "Store/StoreFinding.h"

#include <fmt/format.h>

namespace stintbook {

std::string message(const StoreFinding& finding)
{
    using Kind = StoreFinding::Kind;
    const auto record = finding.record.value_or(StoreFinding::Record());
    const auto name = record.identifier.empty() ? record.table : record.table + " " + record.identifier;
    switch (finding.kind) {
    case Kind::integrity:
        return fmt::format("The database is damaged: {}.", finding.detail);
    case Kind::ownerMissing:
        return fmt::format("{} belongs to a record of {} that is not there.", name, finding.detail);
    case Kind::unreadableRecord:
        return fmt::format("{} could not be read (field: {}).", name, record.field);
    case Kind::segmentReversed:
        return fmt::format("{} does not end after its start.", name);
    case Kind::segmentOverlaps:
        return fmt::format("{} begins before {} ends.", name, finding.detail);
    case Kind::segmentCrossesDay:
        return fmt::format("{} does not end with its day, {}.", name, finding.detail);
    case Kind::itemInconsistent:
        return fmt::format("{} is inconsistent ({}).", name, finding.detail);
    case Kind::approvalOfUnknownDay:
        return fmt::format("{} approves a day that has no reviewed work.", name);
    case Kind::snapshotOfUnknownDay:
        return fmt::format("{} names a day that is unknown, {}.", name, finding.detail);
    }
    return {};
}

} // namespace stintbook
