#include "Review/RunFolding.h"

#include <algorithm>
#include <initializer_list>
#include <iterator>
#include <utility>

namespace stintbook {

namespace {

/// Takes over the entries of the next run.
void extend(Run& run, Run& next)
{
    run.pastEntry = next.pastEntry;
    run.applications.add(std::move(next.applications));
}

/// Takes over the entries of the next run and what explains them.
void join(Run& run, Run& next)
{
    extend(run, next);
    run.explanation.splice(run.explanation.end(), next.explanation);
}

/// The passes over the runs of a day.
///
/// A run's fate depends on itself and its two neighbours alone. So a pass asks again only those of
/// which one of the three changed since they were last asked, in order; the others would give the same
/// answer. Without that, a row of short runs before a long one, which eats one of them a pass, would
/// cost the square of its length.
class Folding {
public:
    Folding(std::vector<Run> runs, const RunQuestions& questions)
        : m_runs(std::move(runs))
        , m_questions(questions)
        , m_links(m_runs.size())
    {
        for (Place place = 0; place < m_links.size(); ++place) {
            m_links[place] = {.previous = place == 0 ? nowhere : place - 1,
                              .next = place + 1 == m_links.size() ? nowhere : place + 1};
            m_toAbsorb.push_back(place);
        }
        m_toJoin = m_toAbsorb;
    }

    std::vector<Run> result()
    {
        while (!m_toAbsorb.empty() || !m_toJoin.empty()) {
            absorbShortRuns();
            joinEqualNeighbours();
        }
        std::vector<Run> left;
        for (Place place = 0; place < m_runs.size(); ++place) {
            if (!m_links[place].isRemoved)
                left.push_back(std::move(m_runs[place]));
        }
        return left;
    }

private:
    using Place = std::size_t;
    static constexpr Place nowhere = ~Place{0};

    struct Link {
        Place previous = nowhere;
        Place next = nowhere;
        bool isRemoved = false;
    };

    void absorbShortRuns()
    {
        for (Place place : inOrder(m_toAbsorb)) {
            // The walk goes on with the run that now stands at the place of one that was absorbed.
            while (place != nowhere && !m_links[place].isRemoved && absorb(place))
                place = m_links[place].next;
        }
    }

    void joinEqualNeighbours()
    {
        for (const Place place : inOrder(m_toJoin)) {
            if (!m_links[place].isRemoved)
                joinFollowers(place);
        }
    }

    /// What a pass has to ask; changes from here on count for the next one.
    static std::vector<Place> inOrder(std::vector<Place>& places)
    {
        auto ordered = std::exchange(places, {});
        std::ranges::sort(ordered);
        const auto [first, last] = std::ranges::unique(ordered);
        ordered.erase(first, last);
        return ordered;
    }

    /// Whether the run was absorbed.
    bool absorb(Place place)
    {
        if (!m_questions.isShort(m_runs[place]))
            return false;
        const auto [previous, next, isRemoved] = m_links[place];
        if (previous != nowhere && takesIn(previous, previous, place)) {
            extend(m_runs[previous], m_runs[place]);
            remove(place);
            note(m_toJoin, {m_links[previous].previous, previous});
            return true;
        }
        if (next != nowhere && takesIn(next, place, next)) {
            m_runs[next].firstEntry = m_runs[place].firstEntry;
            m_runs[next].applications.add(std::move(m_runs[place].applications));
            remove(place);
            note(m_toJoin, {previous, next});
            note(m_toAbsorb, {previous});
            return true;
        }
        return false;
    }

    bool takesIn(Place receiver, Place earlier, Place later) const
    {
        return !m_questions.isShort(m_runs[receiver]) && m_questions.follows(m_runs[earlier], m_runs[later])
            && m_questions.haveEqualReviews(m_runs[earlier], m_runs[later]);
    }

    void joinFollowers(Place place)
    {
        bool hasGrown = false;
        for (Place next = m_links[place].next;
             next != nowhere && m_questions.areJoinable(m_runs[place], m_runs[next]);
             next = m_links[place].next) {
            join(m_runs[place], m_runs[next]);
            remove(next);
            hasGrown = true;
        }
        // What two joinable runs have in common their union has too, so nothing but the length is new.
        if (hasGrown)
            note(m_toAbsorb, {m_links[place].previous, place, m_links[place].next});
    }

    void remove(Place place)
    {
        auto& link = m_links[place];
        if (link.previous != nowhere)
            m_links[link.previous].next = link.next;
        if (link.next != nowhere)
            m_links[link.next].previous = link.previous;
        link.isRemoved = true;
    }

    static void note(std::vector<Place>& places, std::initializer_list<Place> changed)
    {
        std::ranges::copy_if(changed, std::back_inserter(places), [](Place p) { return p != nowhere; });
    }

    std::vector<Run> m_runs;
    const RunQuestions& m_questions;
    std::vector<Link> m_links;
    /// Runs whose absorption, and runs whose joining with the next one, is to be asked.
    std::vector<Place> m_toAbsorb;
    std::vector<Place> m_toJoin;
};

} // namespace

std::vector<Run> folded(std::vector<Run> runs, const RunQuestions& questions)
{
    return Folding(std::move(runs), questions).result();
}

std::vector<Run> chained(std::vector<Run> runs, const RunQuestions& questions)
{
    std::vector<Run> result;
    bool isChainOpen = false;
    for (auto& run : runs) {
        const bool isShort = questions.isShort(run);
        if (isChainOpen && isShort && questions.follows(result.back(), run)
            && questions.haveEqualReviews(result.back(), run)) {
            join(result.back(), run);
        } else {
            result.push_back(std::move(run));
            isChainOpen = isShort;
        }
    }
    return result;
}

} // namespace stintbook
