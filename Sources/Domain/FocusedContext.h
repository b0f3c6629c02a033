#pragma once

#include <array>
#include <optional>
#include <string>
#include <string_view>

#include "Base/RawValue.h"

namespace stintbook {

enum class FocusedContextKind { windowTitle, documentTitle, none };

template <> struct RawValues<FocusedContextKind> {
    static constexpr std::array table{
        std::pair{FocusedContextKind::windowTitle, std::string_view("windowTitle")},
        std::pair{FocusedContextKind::documentTitle, std::string_view("documentTitle")},
        std::pair{FocusedContextKind::none, std::string_view("none")},
    };
};

/// What the focused window said about the work. `none` has an empty text.
struct FocusedContext {
    FocusedContextKind kind = FocusedContextKind::none;
    std::string text;

    static FocusedContext windowTitle(std::string title)
    {
        return {FocusedContextKind::windowTitle, std::move(title)};
    }
    static FocusedContext documentTitle(std::string title)
    {
        return {FocusedContextKind::documentTitle, std::move(title)};
    }
    static FocusedContext none() { return {}; }

    bool isNone() const { return kind == FocusedContextKind::none; }

    friend bool operator==(const FocusedContext&, const FocusedContext&) = default;
};

} // namespace stintbook
