#pragma once

#include <array>
#include <compare>
#include <cstdint>
#include <cstring>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace stintbook {

/// 128 bits as RFC 9562 lays them out; ordered as its canonical text is.
struct UUID {
    std::array<std::uint8_t, 16> bytes{};

    /// A fresh random one (version 4).
    static UUID random();
    /// The canonical 36-character text in either case, and nothing else.
    static std::optional<UUID> parse(std::string_view text);
    /// The first sixteen bytes of a digest, marked as version 8.
    static UUID fromDigest(const std::array<std::uint8_t, 32>& digest);

    std::string upperCaseText() const;
    std::string lowerCaseText() const;

    friend auto operator<=>(const UUID&, const UUID&) = default;
};

/// A UUID that can only be passed where its kind is asked for.
/// The bytes' order is the order of the canonical texts, so comparing never builds a text.
template <typename Kind> struct Identifier {
    UUID uuid;

    static Identifier random() { return {UUID::random()}; }
    static std::optional<Identifier> parse(std::string_view text)
    {
        if (auto parsed = UUID::parse(text))
            return Identifier{*parsed};
        return std::nullopt;
    }
    /// Canonical text, upper case.
    std::string text() const { return uuid.upperCaseText(); }

    friend auto operator<=>(const Identifier&, const Identifier&) = default;
};

} // namespace stintbook

template <> struct std::hash<stintbook::UUID> {
    std::size_t operator()(const stintbook::UUID& id) const noexcept
    {
        std::size_t head = 0;
        std::memcpy(&head, id.bytes.data(), sizeof head);
        return head;
    }
};

template <typename Kind> struct std::hash<stintbook::Identifier<Kind>> {
    std::size_t operator()(const stintbook::Identifier<Kind>& id) const noexcept
    {
        return std::hash<stintbook::UUID>{}(id.uuid);
    }
};
