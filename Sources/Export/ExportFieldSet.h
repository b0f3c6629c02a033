#pragma once

#include <array>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "Export/ExportFormat.h"

namespace stintbook {

/// Which columns are wanted.
struct ExportFieldSet {
    bool includesDate = false;
    bool includesClient = false;
    bool includesProject = false;
    bool includesDuration = false;
    bool includesTimeOfDay = false;
    bool includesDescription = false;
    bool includesBillableState = false;
    bool includesRateAndAmount = false;

    /// The columns of a mode when none are remembered.
    static ExportFieldSet standard(ExportMode mode);
    /// Tokens joined by commas, in any order; one that comes twice counts once. Absent when a token is none
    /// of the fields' (white space and an empty token are none either).
    static std::optional<ExportFieldSet> parse(std::string_view tokens);
    /// In the order of the fields.
    std::string tokens() const;

    /// With what the format sets: every row carries its duration; a summary row has no date, a detailed row
    /// always has one.
    ExportFieldSet normalised(ExportMode mode) const;

    friend bool operator==(const ExportFieldSet&, const ExportFieldSet&) = default;
};

struct ExportFieldToken {
    std::string_view token;
    bool ExportFieldSet::* field;
};

inline constexpr std::array exportFieldTokens{
    ExportFieldToken{"date", &ExportFieldSet::includesDate},
    ExportFieldToken{"client", &ExportFieldSet::includesClient},
    ExportFieldToken{"project", &ExportFieldSet::includesProject},
    ExportFieldToken{"duration", &ExportFieldSet::includesDuration},
    ExportFieldToken{"timeOfDay", &ExportFieldSet::includesTimeOfDay},
    ExportFieldToken{"description", &ExportFieldSet::includesDescription},
    ExportFieldToken{"billableState", &ExportFieldSet::includesBillableState},
    ExportFieldToken{"rateAndAmount", &ExportFieldSet::includesRateAndAmount},
};

/// The columns that a format has or leaves out as one likes; the others are set by the format.
std::vector<ExportFieldToken> choosableFields(ExportFormat format);

/// What is set by the format, for those who choose.
inline constexpr std::array fieldsSetByFormat{
    std::string_view("every row carries its duration"),
    std::string_view("a summary row has no date; a detailed row always has one"),
    std::string_view("the client column is shown only when the export covers more than one client"),
};

/// Of every format.
inline constexpr std::string_view neverExportedNote =
    "Window titles, URLs, and attribution reasons are never included.";

} // namespace stintbook
