#include "Review/SegmentEvaluator.h"

namespace stintbook {

const AttributionEvaluation* SegmentEvaluator::evaluation(const ActivitySegment& segment)
{
    using Evaluation = std::optional<AttributionEvaluation>;
    const auto& evaluation = m_evaluations.answer(segment, [this](const RuleSubject& subject) {
        return m_exclusion.excludes(subject) ? Evaluation() : Evaluation(m_engine.evaluate(subject));
    });
    return evaluation ? &*evaluation : nullptr;
}

} // namespace stintbook
