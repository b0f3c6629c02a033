#include "Review/SegmentEvaluator.h"

namespace stintbook {

SegmentEvaluator::Kind::Kind(const ActivitySegment& segment)
{
    if (segment.application)
        application = segment.application->bundleIdentifier;
    if (segment.browserDomain)
        host = segment.browserDomain->host();
    if (!segment.context.isNone())
        title = segment.context.text;
}

std::size_t SegmentEvaluator::KindHash::operator()(const Kind& kind) const
{
    constexpr std::hash<std::optional<std::string_view>> hash{};
    // 2^64 divided by the golden ratio, so that equal parts do not cancel each other out.
    constexpr std::size_t factor = 0x9E3779B97F4A7C15;
    return (hash(kind.application) * factor + hash(kind.host)) * factor + hash(kind.title);
}

const AttributionEvaluation* SegmentEvaluator::evaluation(const ActivitySegment& segment)
{
    const auto [place, isNew] = m_evaluations.try_emplace(Kind(segment));
    auto& evaluation = place->second;
    if (isNew) {
        const auto [title, isNewTitle] = m_foldedTitles.try_emplace(segment.context.text);
        if (isNewTitle)
            title->second = foldedTitle(segment);
        const RuleSubject subject(segment, title->second);
        if (!m_exclusion.excludes(subject))
            evaluation = m_engine.evaluate(subject);
    }
    return evaluation ? &*evaluation : nullptr;
}

} // namespace stintbook
