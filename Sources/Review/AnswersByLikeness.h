#pragma once

#include <memory_resource>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>

#include "Domain/ActivitySegment.h"
#include "Rules/RuleSubject.h"

namespace stintbook {

/// Remembers what was asked of rules about segments, once for all that look alike to them: days hold few kinds
/// of segments. Refers to the segments that it was asked about.
template <typename Answer> class AnswersByLikeness {
public:
    /// `ask(RuleSubject)` where no segment like this one was asked about before. The answer stays where it is
    /// as long as this lives.
    template <typename Ask> const Answer& answer(const ActivitySegment& segment, Ask ask)
    {
        const auto [place, isNew] = m_answers.try_emplace(Likeness(segment));
        if (isNew) {
            const auto [title, isNewTitle] = m_foldedTitles.try_emplace(segment.context.text);
            if (isNewTitle)
                title->second = foldedTitle(segment);
            place->second = ask(RuleSubject(segment, title->second));
        }
        return place->second;
    }

private:
    /// What rules can tell segments apart by.
    struct Likeness {
        explicit Likeness(const ActivitySegment& segment)
        {
            if (segment.application)
                application = segment.application->bundleIdentifier;
            if (segment.browserDomain)
                host = segment.browserDomain->host();
            if (!segment.context.isNone())
                title = segment.context.text;
        }

        std::optional<std::string_view> application;
        std::optional<std::string_view> host;
        std::optional<std::string_view> title;

        friend bool operator==(const Likeness&, const Likeness&) = default;
    };
    struct LikenessHash {
        std::size_t operator()(const Likeness& likeness) const
        {
            constexpr std::hash<std::optional<std::string_view>> hash{};
            // 2^64 divided by the golden ratio, so that equal parts do not cancel each other out.
            constexpr std::size_t factor = 0x9E3779B97F4A7C15;
            return (hash(likeness.application) * factor + hash(likeness.host)) * factor
                + hash(likeness.title);
        }
    };

    /// The maps only grow and go together.
    std::pmr::monotonic_buffer_resource m_memory{64 * 1024};
    std::pmr::unordered_map<Likeness, Answer, LikenessHash> m_answers{&m_memory};
    std::pmr::unordered_map<std::string_view, std::string> m_foldedTitles{&m_memory};
};

} // namespace stintbook
