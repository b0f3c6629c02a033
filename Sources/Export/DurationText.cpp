#include "Export/DurationText.h"

#include <array>

namespace stintbook {

namespace {

Decimal roundedDown(const Decimal& number)
{
    return -(-number).roundedUp();
}

} // namespace

std::string durationText(const Decimal& seconds)
{
    struct Unit {
        const char* name;
        int seconds;
    };
    constexpr std::array units{Unit{" h", 3600}, Unit{" min", 60}, Unit{" s", 1}};

    std::string text;
    Decimal rest = seconds.rounded(0);
    for (const auto& unit : units) {
        const Decimal count = roundedDown(rest / unit.seconds);
        if (count.isZero())
            continue;
        rest -= count * unit.seconds;
        text += (text.empty() ? "" : " ") + count.text() + unit.name;
    }
    return text.empty() ? "0 min" : text;
}

} // namespace stintbook
