#pragma once

#include <expected>
#include <optional>
#include <string>

#include "Rules/RuleMatch.h"

namespace stintbook {

/// A rule's conditions as typed.
struct TypedMatch {
    std::optional<std::string> application;
    std::optional<std::string> domain;
    std::optional<std::string> title;
};

/// The text is no web domain.
struct DomainRefused {
    std::string text;

    friend bool operator==(const DomainRefused&, const DomainRefused&) = default;
};

std::string message(const DomainRefused& refused);

/// The conditions with the domain in normal form; texts are kept as they were typed.
[[nodiscard]] std::expected<RuleMatch, DomainRefused> checked(const TypedMatch& typed);

} // namespace stintbook
