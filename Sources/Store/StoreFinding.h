#pragma once

#include <array>
#include <optional>
#include <string>
#include <utility>

#include "Base/RawValue.h"

namespace stintbook {

/// Something that is wrong with a store.
struct StoreFinding {
    enum class Kind {
        /// The database's own checks fail.
        integrity,
        /// A part of an item or a snapshot that is not there.
        ownerMissing,
        /// A record fails the check that it passes on its way back.
        unreadableRecord,
        segmentReversed,
        segmentOverlaps,
        segmentCrossesDay,
        itemInconsistent,
        approvalOfUnknownDay,
        snapshotOfUnknownDay,
    };
    struct Record {
        std::string table;
        /// Its UUID or key; of a part of a snapshot the snapshot's, "/" and the place; empty where it has none.
        std::string identifier;
        /// As in `UnreadableRecord`; empty where it is not about one field.
        std::string field;

        friend bool operator==(const Record&, const Record&) = default;
    };

    Kind kind = Kind::integrity;
    /// Absent where the database names none.
    std::optional<Record> record;
    /// The database's words, the invariant, the other record or the day.
    std::string detail;

    friend bool operator==(const StoreFinding&, const StoreFinding&) = default;
};

template <> struct RawValues<StoreFinding::Kind> {
    using Kind = StoreFinding::Kind;
    static constexpr std::array table{
        std::pair{Kind::integrity, std::string_view("integrity")},
        std::pair{Kind::ownerMissing, std::string_view("ownerMissing")},
        std::pair{Kind::unreadableRecord, std::string_view("unreadableRecord")},
        std::pair{Kind::segmentReversed, std::string_view("segmentReversed")},
        std::pair{Kind::segmentOverlaps, std::string_view("segmentOverlaps")},
        std::pair{Kind::segmentCrossesDay, std::string_view("segmentCrossesDay")},
        std::pair{Kind::itemInconsistent, std::string_view("itemInconsistent")},
        std::pair{Kind::approvalOfUnknownDay, std::string_view("approvalOfUnknownDay")},
        std::pair{Kind::snapshotOfUnknownDay, std::string_view("snapshotOfUnknownDay")},
    };
};

std::string message(const StoreFinding& finding);

} // namespace stintbook
