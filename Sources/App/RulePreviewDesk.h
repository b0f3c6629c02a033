#pragma once

#include <expected>
#include <optional>
#include <string>
#include <variant>

#include "App/DayBook.h"
#include "App/OpenedStore.h"
#include "App/RuleBook.h"
#include "Review/RuleEffect.h"
#include "Review/RulePrecedencePreview.h"
#include "Review/RuleSuggestion.h"
#include "Rules/RuleList.h"

namespace stintbook {

/// Why work yields no suggestion.
enum class NoSuggestion {
    /// Nothing was said about whom it is for.
    withoutTarget,
    /// It has neither a domain nor an application, and no words were marked.
    withoutCondition,
};

using RuleSuggestionProblem = std::variant<PersistenceError, UnknownWork, NoSuggestion, RuleEditProblem>;
std::string message(const RuleSuggestionProblem& problem);

/// Shows what rules do to recorded work, and what a new one would. Writes nothing.
class RulePreviewDesk {
public:
    RulePreviewDesk(OpenedStore& store, CalendarContext calendar);

    /// Over the blocks of that many local days up to today; what is frozen by then is beyond the rules.
    Stored<RulePrecedencePreview> preview(int windowDays, Instant now) const;

    /// What saving the draft would change of the same blocks; refused as saving it would be.
    RuleEdited<RuleEffect> effect(const RuleDraft& draft, int windowDays, Instant now) const;

    struct CorrectedWork {
        LocalDay day;
        /// A block or an item of it.
        UUID id;
        /// Absent: what the work is assigned to.
        std::optional<WorkTarget> target;
        /// The words that the user marked in a title.
        std::optional<std::string> titleWords;
    };
    template <typename T> using Suggested = std::expected<T, RuleSuggestionProblem>;
    Suggested<RuleSuggestion> suggest(const CorrectedWork& work) const;

    /// How many blocks of the day the proposal would attribute from the top of the list.
    Suggested<int> blockCount(const LocalDay& day, const RuleProposal& proposal) const;

private:
    /// The blocks of the window under these rules.
    Stored<std::vector<WorkBlock>> blocks(const AttributionEngine& engine, const ExclusionEngine& exclusion,
                                          int windowDays, Instant now) const;

    OpenedStore& m_store;
    CalendarContext m_calendar;
};

} // namespace stintbook
