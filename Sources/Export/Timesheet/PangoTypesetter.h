#pragma once

#include <memory>

#include "Export/Timesheet/TextMeasuring.h"

using cairo_t = struct _cairo; // NOLINT(readability-identifier-naming): cairo's own name

namespace stintbook {

/// Shapes texts in "Helvetica": Liberation Sans, which has its widths; letters that it lacks come from
/// whatever other font the system has for them. Uses no hinting, so that a text is as wide on every surface
/// as it was measured. One value is for one thread.
class PangoTypesetter final : public TextMeasuring {
public:
    /// The locale tells languages with common characters apart, as in "ja_JP".
    explicit PangoTypesetter(std::string_view locale);
    ~PangoTypesetter() override;

    MeasuredText wrapped(std::string_view text, const TextStyle& style, double width) override;
    double widthOf(std::string_view text, const TextStyle& style) override;

    /// In cairo's present colour, a unit a point.
    void draw(cairo_t* surface, const TimesheetText& text);

private:
    struct State;

    std::unique_ptr<State> m_state;
};

} // namespace stintbook
