#include "Export/Timesheet/TextSetting.h"

#include <algorithm>

#include "Base/Text.h"

namespace stintbook {

namespace {

constexpr double leastScaleOfAFigure = 0.6;

TextStyle styleOf(const TimesheetText& look)
{
    return {.size = look.size, .weight = look.weight, .tabular = look.tabular};
}

/// What can be set: well formed, without control characters, with line feeds as its only line breaks.
std::string settable(std::string_view string)
{
    const auto wellFormedString = wellFormed(string);
    std::string text;
    unsigned char previous = 0;
    for (const char c : wellFormedString) {
        const auto byte = static_cast<unsigned char>(c);
        const bool isSecondOfC1 = previous == 0xC2 && byte < 0xA0;
        if (isSecondOfC1)
            text.back() = ' ';
        else if (c == '\r' || c == '\n')
            text += c == '\n' && previous == '\r' ? "" : "\n";
        else
            text += byte < 0x20 || byte == 0x7F ? ' ' : c;
        previous = byte;
    }
    return trimmed(text);
}

TimesheetText placed(TimesheetText look, MeasuredText measured, TextSetting::Span span, TimesheetAlign align)
{
    look.direction = measured.direction;
    for (auto& [string, width] : measured.lines) {
        const double x = align == TimesheetAlign::left ? span.left : span.right - width;
        look.lines.push_back({std::move(string), x, width});
    }
    return look;
}

} // namespace

TimesheetText TextSetting::wrapped(TimesheetText look, std::string_view string, Span span) const
{
    const auto text = settable(string);
    if (text.empty())
        return look;
    auto measured = m_measuring.wrapped(text, styleOf(look), span.width());
    return placed(std::move(look), std::move(measured), span, TimesheetAlign::left);
}

TimesheetText TextSetting::wrappedFromItsStart(TimesheetText look, std::string_view string, Span span) const
{
    auto text = wrapped(std::move(look), string, span);
    if (text.direction == TimesheetDirection::rightToLeft) {
        for (auto& line : text.lines)
            line.x = span.right - line.boxWidth;
    }
    return text;
}

TimesheetText TextSetting::shortened(const TimesheetText& look, std::string_view string, Span span) const
{
    constexpr std::string_view ellipsis = "…";
    auto whole = wrapped(look, string, span);
    if (whole.lines.size() <= 1)
        return whole;
    span.right -= m_measuring.widthOf(ellipsis, styleOf(look));
    auto start = wrapped(look, string, span);
    auto& first = start.lines.front();
    first.string += ellipsis;
    first.boxWidth = m_measuring.widthOf(first.string, styleOf(look));
    start.lines.resize(1);
    return start;
}

TimesheetText TextSetting::figure(TimesheetText look, std::string_view string, Span span,
                                  TimesheetAlign align) const
{
    const auto text = settable(string);
    if (text.empty())
        return look;
    auto measured = m_measuring.wrapped(text, styleOf(look), span.width());
    if (measured.lines.size() > 1) {
        const double width = m_measuring.widthOf(text, styleOf(look));
        // A hair less than fits, for widths are rounded when they are measured.
        look.size *= std::clamp(0.999 * span.width() / width, leastScaleOfAFigure, 1.0);
        measured = m_measuring.wrapped(text, styleOf(look), span.width());
    }
    return placed(std::move(look), std::move(measured), span, align);
}

} // namespace stintbook
