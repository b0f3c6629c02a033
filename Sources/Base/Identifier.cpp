#include "Base/Identifier.h"

#include <algorithm>

#include <uuid.h>

namespace stintbook {

namespace {

constexpr std::size_t canonicalLength = 36;

template <typename Unparse> std::string canonicalText(const UUID& id, Unparse unparse)
{
    std::array<char, canonicalLength + 1> text{};
    unparse(id.bytes.data(), text.data());
    return {text.data(), canonicalLength};
}

} // namespace

UUID UUID::random()
{
    UUID id;
    uuid_generate_random(id.bytes.data());
    return id;
}

std::optional<UUID> UUID::parse(std::string_view text)
{
    UUID id;
    if (text.size() != canonicalLength
        || uuid_parse_range(text.data(), text.data() + text.size(), id.bytes.data()) != 0)
        return std::nullopt;
    return id;
}

UUID UUID::fromDigest(const std::array<std::uint8_t, 32>& digest)
{
    UUID id;
    std::copy_n(digest.begin(), id.bytes.size(), id.bytes.begin());
    id.bytes[6] = static_cast<std::uint8_t>((id.bytes[6] & 0x0F) | 0x80); // version 8
    id.bytes[8] = static_cast<std::uint8_t>((id.bytes[8] & 0x3F) | 0x80); // the variant of RFC 9562
    return id;
}

std::string UUID::upperCaseText() const
{
    return canonicalText(*this, uuid_unparse_upper);
}

std::string UUID::lowerCaseText() const
{
    return canonicalText(*this, uuid_unparse_lower);
}

} // namespace stintbook
