#pragma once

#include <string>
#include <string_view>
#include <vector>

/// Questions about UTF-8 text that need Unicode's tables. Ill-formed bytes are read as U+FFFD.
namespace stintbook {

/// A copy without white space and line breaks at both ends (Unicode's White_Space).
std::string trimmed(std::string_view text);
bool isBlank(std::string_view text);
bool containsWhitespace(std::string_view text);

/// Lower-cases without a locale.
std::string lowerCased(std::string_view text);
/// Upper-cases without a locale.
std::string upperCased(std::string_view text);

/// The form in which titles are compared, ignoring case and diacritics: canonical decomposition,
/// nonspacing marks dropped, full case folding, decomposed again. Folding twice changes nothing.
std::string foldedForSearch(std::string_view text);

/// Letters of any script, and decimal digits of any script.
bool isLetterOrDigit(char32_t character);

std::u32string codePoints(std::string_view text);

/// The user-perceived characters of a text, in order, as views into it. CR LF is one of them.
std::vector<std::string_view> graphemes(std::string_view text);

bool isValidUTF8(std::string_view text);
/// The text with every ill-formed sequence replaced by U+FFFD.
std::string wellFormed(std::string_view text);

} // namespace stintbook
