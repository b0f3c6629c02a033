#include "App/RulePreviewDesk.h"

#include <algorithm>
#include <limits>
#include <utility>

#include "App/ClientBook.h"
#include "App/RecordedDay.h"
#include "Base/Try.h"
#include "Review/WorkBlockBuilder.h"
#include "Store/PersistentActivitySegmentRepository.h"
#include "Store/PersistentReviewStore.h"

namespace stintbook {

namespace {

std::string sentence(NoSuggestion reason)
{
    switch (reason) {
    case NoSuggestion::withoutTarget:
        return "This work has no client and project yet, so there is nothing that a rule could assign.";
    case NoSuggestion::withoutCondition:
        return "This work shows neither an application nor a web domain, so no rule can be made from it.";
    }
    return {};
}

std::string sentence(const UnknownWork& unknown)
{
    return message(DayEditProblem(unknown));
}

template <typename Problem> std::string sentence(const Problem& problem)
{
    return message(problem);
}

/// The first instant of the window's first day.
Instant windowStart(const CalendarContext& calendar, int windowDays, Instant now)
{
    const auto date = calendar.dateOf(now).plusDays(1 - windowDays);
    return date.year < 1 ? Instant{-std::numeric_limits<double>::infinity()}
                         : calendar.instantOn(date, 0, 0, 0);
}

/// The target as it stands in a rule, which says billable or not only where that is not the project's default.
struct RuleTarget {
    ClientID clientID;
    ProjectID projectID;
    std::optional<bool> billableOverride;
};

RuleTarget ruleTarget(const AttributionAssignment& assignment, const AssignmentDirectory& directory)
{
    const auto* project = directory.project(assignment.projectID);
    const bool isDefault = project != nullptr && project->defaultBillable == assignment.isBillable;
    return {assignment.clientID, assignment.projectID,
            isDefault ? std::nullopt : std::optional(assignment.isBillable)};
}

std::optional<RuleTarget> target(const RulePreviewDesk::CorrectedWork& work, const ReviewSubject& subject,
                                 const AssignmentDirectory& directory)
{
    if (work.target)
        return RuleTarget{work.target->clientID, work.target->projectID, work.target->isBillable};
    if (const auto assignment = effectiveAssignment(subject))
        return ruleTarget(*assignment, directory);
    return std::nullopt;
}

} // namespace

std::string message(const RuleSuggestionProblem& problem)
{
    return std::visit([](const auto& which) { return sentence(which); }, problem);
}

RulePreviewDesk::RulePreviewDesk(OpenedStore& store, CalendarContext calendar)
    : m_store(store)
    , m_calendar(std::move(calendar))
{
}

Stored<RulePrecedencePreview> RulePreviewDesk::preview(int windowDays, Instant now) const
{
    return m_store.database().read([&](StoreConnection&) -> Stored<RulePrecedencePreview> {
        auto rules = TRY(m_store.review().attributionRules());
        auto built = TRY(blocks(AttributionEngine(rules, TRY(ClientBook(m_store).directory())),
                                ExclusionEngine(TRY(m_store.review().exclusionRules())), windowDays, now));
        return rulePrecedencePreview(std::move(rules), std::move(built));
    });
}

RuleEdited<RuleEffect> RulePreviewDesk::effect(const RuleDraft& draft, int windowDays, Instant now) const
{
    return m_store.database().read([&](StoreConnection&) -> RuleEdited<RuleEffect> {
        const auto directory = TRY(ClientBook(m_store).directory());
        const auto present = TRY(m_store.review().attributionRules());
        auto proposed = TRY(saved(present, draft, directory));
        const ExclusionEngine exclusion(TRY(m_store.review().exclusionRules()));
        auto built = TRY(blocks(AttributionEngine(proposed, directory), exclusion, windowDays, now));
        return ruleEffect(rulePrecedencePreview(std::move(proposed), std::move(built)), draft.id,
                          AttributionEngine(present, directory), windowDays);
    });
}

Stored<std::vector<WorkBlock>> RulePreviewDesk::blocks(const AttributionEngine& engine,
                                                       const ExclusionEngine& exclusion, int windowDays,
                                                       Instant now) const
{
    const WorkBlockBuilder builder(m_calendar, engine, exclusion);
    std::vector<WorkBlock> blocks;
    const auto end = m_calendar.nextDayStart(now);
    auto at = windowStart(m_calendar, windowDays, now);
    // Days without a record are passed over at once.
    while (const auto recorded = TRY(m_store.segments().firstRecorded(at))) {
        if (*recorded >= end)
            break;
        const auto bounds = m_calendar.boundsOfDayAt(*recorded);
        const auto day = TRY(recordedDay(m_store, bounds));
        std::ranges::move(builder.blocks(day.free, day.reviews), std::back_inserter(blocks));
        at = bounds.end;
    }
    return blocks;
}

RulePreviewDesk::Suggested<RuleSuggestion> RulePreviewDesk::suggest(const CorrectedWork& work) const
{
    return m_store.database().read([&](StoreConnection&) -> Suggested<RuleSuggestion> {
        const auto opened = TRY(DayBook(m_store, m_calendar).open(work.day));
        const auto subject = opened.content().subject(work.id);
        if (!subject)
            return std::unexpected(UnknownWork{work.id});
        const auto directory = TRY(ClientBook(m_store).directory());
        const auto whom = target(work, *subject, directory);
        if (!whom)
            return std::unexpected(NoSuggestion::withoutTarget);

        RuleSuggestion suggestion{.id = RuleID::random(),
                                  .match = {},
                                  .clientID = whom->clientID,
                                  .projectID = whom->projectID,
                                  .billableOverride = whom->billableOverride};
        suggestion.match =
            suggestedMatch(*subject, whom->clientID, opened.content(), *opened.loaded->recorded);
        suggestion.match.titleContains = work.titleWords;
        if (suggestion.match.isEmpty())
            return std::unexpected(NoSuggestion::withoutCondition);
        suggestion.blockCount = TRY(blockCount(work.day, suggestion));
        return suggestion;
    });
}

RulePreviewDesk::Suggested<int> RulePreviewDesk::blockCount(const LocalDay& day,
                                                            const RuleProposal& proposal) const
{
    return m_store.database().read([&](StoreConnection&) -> Suggested<int> {
        const auto directory = TRY(ClientBook(m_store).directory());
        const auto rules =
            TRY(insertedAtTop(TRY(m_store.review().attributionRules()), rule(proposal), directory));
        const auto calendar = CalendarContext::inZone(day.timeZoneIdentifier).value_or(m_calendar);
        const WorkBlockBuilder builder(calendar, AttributionEngine(rules, directory),
                                       ExclusionEngine(TRY(m_store.review().exclusionRules())));
        const auto recorded = TRY(recordedDay(m_store, calendar.boundsOf(day)));
        return static_cast<int>(
            std::ranges::count(builder.blocks(recorded.free, recorded.reviews), std::optional(proposal.id),
                               [](const WorkBlock& block) { return block.attribution.winningRuleID; }));
    });
}

} // namespace stintbook
