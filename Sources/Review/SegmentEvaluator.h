#pragma once

#include <memory_resource>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>

#include "Domain/ActivitySegment.h"
#include "Rules/AttributionEngine.h"
#include "Rules/ExclusionEngine.h"

namespace stintbook {

/// Asks the engines once for all segments that look alike to rules: a day holds few kinds of them. Refers
/// to the engines and to the segments it was asked about, and lives as long as the building of one day.
class SegmentEvaluator {
public:
    SegmentEvaluator(const AttributionEngine& engine, const ExclusionEngine& exclusion)
        : m_engine(engine)
        , m_exclusion(exclusion)
    {
    }

    /// Null when the segment is excluded. The same object for segments that look alike; it lives as long as
    /// this does.
    const AttributionEvaluation* evaluation(const ActivitySegment& segment);

private:
    /// What rules can tell segments apart by.
    struct Kind {
        explicit Kind(const ActivitySegment& segment);

        std::optional<std::string_view> application;
        std::optional<std::string_view> host;
        std::optional<std::string_view> title;

        friend bool operator==(const Kind&, const Kind&) = default;
    };
    struct KindHash {
        std::size_t operator()(const Kind& kind) const;
    };

    const AttributionEngine& m_engine;
    const ExclusionEngine& m_exclusion;
    /// The maps only grow and go together.
    std::pmr::monotonic_buffer_resource m_memory{64 * 1024};
    /// Absent where the kind is excluded.
    std::pmr::unordered_map<Kind, std::optional<AttributionEvaluation>, KindHash> m_evaluations{&m_memory};
    std::pmr::unordered_map<std::string_view, std::string> m_foldedTitles{&m_memory};
};

} // namespace stintbook
