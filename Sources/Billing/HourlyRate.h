#pragma once

#include <expected>
#include <optional>
#include <string>
#include <string_view>

#include "Base/Decimal.h"

namespace stintbook {

enum class RateProblem { notANumber, tooManyDigits, negative };
std::string message(RateProblem problem);

/// A typed hourly rate: a number, nothing ("no rate"), or why it is not accepted. The point is '.', whatever
/// the locale.
std::expected<std::optional<Decimal>, RateProblem> validateRate(std::string_view text);

enum class Billability { billable, nonBillable };

/// (seconds × rate) ÷ 3600, rounded once to 38 digits; absent without a rate and for non-billable work.
std::optional<Decimal> amount(const Decimal& billedSeconds, const std::optional<Decimal>& hourlyRate,
                              Billability billability);

} // namespace stintbook
