#pragma once

#include <array>
#include <string_view>
#include <utility>

#include "Base/RawValue.h"

namespace stintbook {

/// Whether the windows are light or dark.
enum class AppearanceChoice {
    /// As the desktop is.
    system,
    light,
    dark,
};

template <> struct RawValues<AppearanceChoice> {
    static constexpr std::array table{
        std::pair{AppearanceChoice::system, std::string_view("system")},
        std::pair{AppearanceChoice::light, std::string_view("light")},
        std::pair{AppearanceChoice::dark, std::string_view("dark")},
    };
};

} // namespace stintbook
