#pragma once

#include <optional>

#include "Domain/ActivitySegment.h"
#include "Review/AnswersByLikeness.h"
#include "Rules/AttributionEngine.h"
#include "Rules/ExclusionEngine.h"

namespace stintbook {

/// Asks the engines about segments. Refers to the engines and to the segments it was asked about, and lives
/// as long as the building of one day.
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
    const AttributionEngine& m_engine;
    const ExclusionEngine& m_exclusion;
    /// Absent where such segments are excluded.
    AnswersByLikeness<std::optional<AttributionEvaluation>> m_evaluations;
};

} // namespace stintbook
