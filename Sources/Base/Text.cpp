#include "Base/Text.h"

#include <algorithm>
#include <memory>

#include <unicode/brkiter.h>
#include <unicode/normalizer2.h>
#include <unicode/uchar.h>
#include <unicode/unistr.h>
#include <unicode/utext.h>
#include <unicode/utf16.h>
#include <unicode/utf8.h>

namespace stintbook {

namespace {

int32_t length(std::string_view text)
{
    return static_cast<int32_t>(text.size());
}

bool isASCIICharacter(char c)
{
    return static_cast<unsigned char>(c) < 0x80;
}

bool isASCII(std::string_view text)
{
    return std::ranges::all_of(text, isASCIICharacter);
}

char lowerCasedASCII(char c)
{
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

icu::UnicodeString unicode(std::string_view text)
{
    return icu::UnicodeString::fromUTF8(icu::StringPiece(text.data(), length(text)));
}

std::string utf8(const icu::UnicodeString& text)
{
    std::string result;
    return text.toUTF8String(result);
}

/// Calls `visit(character)` for each code point until it answers false; a negative one stands for an
/// ill-formed sequence.
template <typename Visit> bool everyCodePoint(std::string_view text, Visit visit)
{
    for (int32_t i = 0; i < length(text);) {
        UChar32 character = 0;
        U8_NEXT(text.data(), i, length(text), character);
        if (!visit(character))
            return false;
    }
    return true;
}

/// Absent only when the process lacks ICU's data, which the program cannot run without.
const icu::Normalizer2* canonicalDecomposition()
{
    static const icu::Normalizer2* const instance = [] {
        UErrorCode status = U_ZERO_ERROR;
        return icu::Normalizer2::getNFDInstance(status);
    }();
    return instance;
}

icu::UnicodeString decomposed(const icu::UnicodeString& text)
{
    UErrorCode status = U_ZERO_ERROR;
    auto result = canonicalDecomposition()->normalize(text, status);
    return U_SUCCESS(status) ? result : text;
}

icu::UnicodeString withoutNonspacingMarks(icu::UnicodeString text)
{
    constexpr UChar32 firstMark = 0x300; // the lowest of all of Unicode's
    const int32_t size = text.length();
    char16_t* const units = text.getBuffer(size);
    int32_t kept = 0;
    for (int32_t i = 0; i < size;) {
        UChar32 character = 0;
        U16_NEXT(units, i, size, character);
        if (character < firstMark || u_charType(character) != U_NON_SPACING_MARK)
            U16_APPEND_UNSAFE(units, kept, character);
    }
    text.releaseBuffer(kept);
    return text;
}

std::vector<std::string_view> asciiGraphemes(std::string_view text)
{
    std::vector<std::string_view> result;
    result.reserve(text.size());
    while (!text.empty()) {
        const std::size_t size = text.starts_with("\r\n") ? 2 : 1;
        result.push_back(text.substr(0, size));
        text.remove_prefix(size);
    }
    return result;
}

icu::BreakIterator* characterBreaks()
{
    thread_local const std::unique_ptr<icu::BreakIterator> instance = [] {
        UErrorCode status = U_ZERO_ERROR;
        return std::unique_ptr<icu::BreakIterator>(
            icu::BreakIterator::createCharacterInstance(icu::Locale::getRoot(), status));
    }();
    return instance.get();
}

} // namespace

std::string trimmed(std::string_view text)
{
    int32_t begin = 0;
    for (int32_t next = 0; next < length(text); begin = next) {
        UChar32 character = 0;
        U8_NEXT(text.data(), next, length(text), character);
        if (!u_isUWhiteSpace(character))
            break;
    }
    int32_t end = length(text);
    for (int32_t previous = end; previous > begin; end = previous) {
        UChar32 character = 0;
        U8_PREV(text.data(), begin, previous, character);
        if (!u_isUWhiteSpace(character))
            break;
    }
    return std::string(text.substr(static_cast<std::size_t>(begin), static_cast<std::size_t>(end - begin)));
}

bool isBlank(std::string_view text)
{
    return everyCodePoint(text, [](UChar32 character) { return u_isUWhiteSpace(character); });
}

bool containsWhitespace(std::string_view text)
{
    return !everyCodePoint(text, [](UChar32 character) { return !u_isUWhiteSpace(character); });
}

std::string lowerCased(std::string_view text)
{
    if (isASCII(text)) {
        std::string result(text);
        std::ranges::transform(result, result.begin(), lowerCasedASCII);
        return result;
    }
    return utf8(unicode(text).toLower(icu::Locale::getRoot()));
}

std::string upperCased(std::string_view text)
{
    return utf8(unicode(text).toUpper(icu::Locale::getRoot()));
}

std::string foldedForSearch(std::string_view text)
{
    // Neither decomposition nor the order of marks reaches across an ASCII character: each run of the others
    // folds on its own. Most titles have few of them.
    std::string result;
    result.reserve(text.size());
    for (auto rest = text.begin(); rest != text.end();) {
        const auto others = std::find_if_not(rest, text.end(), isASCIICharacter);
        std::transform(rest, others, std::back_inserter(result), lowerCasedASCII);
        rest = std::find_if(others, text.end(), isASCIICharacter);
        if (others == rest)
            continue;
        auto folded = withoutNonspacingMarks(decomposed(unicode({others, rest})));
        folded.foldCase(U_FOLD_CASE_DEFAULT);
        decomposed(folded).toUTF8String(result);
    }
    return result;
}

bool isLetterOrDigit(char32_t character)
{
    const auto candidate = static_cast<UChar32>(character);
    return u_isalpha(candidate) || u_isdigit(candidate);
}

std::u32string codePoints(std::string_view text)
{
    std::u32string result;
    result.reserve(text.size());
    everyCodePoint(text, [&](UChar32 character) {
        result.push_back(character < 0 ? U'\uFFFD' : static_cast<char32_t>(character));
        return true;
    });
    return result;
}

std::vector<std::string_view> graphemes(std::string_view text)
{
    if (isASCII(text))
        return asciiGraphemes(text);

    UErrorCode status = U_ZERO_ERROR;
    UText* source = utext_openUTF8(nullptr, text.data(), length(text), &status);
    icu::BreakIterator* breaks = characterBreaks();
    breaks->setText(source, status);
    utext_close(source);

    std::vector<std::string_view> result;
    for (int32_t begin = breaks->first(), end = breaks->next(); end != icu::BreakIterator::DONE;
         begin = end, end = breaks->next())
        result.push_back(text.substr(static_cast<std::size_t>(begin), static_cast<std::size_t>(end - begin)));
    return result;
}

bool isValidUTF8(std::string_view text)
{
    return isASCII(text) || everyCodePoint(text, [](UChar32 character) { return character >= 0; });
}

std::string wellFormed(std::string_view text)
{
    return isValidUTF8(text) ? std::string(text) : utf8(unicode(text));
}

} // namespace stintbook
