#include "Export/Timesheet/PangoTypesetter.h"

#include <map>
#include <tuple>
#include <utility>

#include <pango/pangocairo.h>

namespace stintbook {

namespace {

constexpr const char* family = "Liberation Sans, Helvetica, Arial";

struct Release {
    void operator()(PangoFontMap* object) const { g_object_unref(object); }
    void operator()(PangoContext* object) const { g_object_unref(object); }
    void operator()(PangoLayout* object) const { g_object_unref(object); }
    void operator()(PangoFontDescription* object) const { pango_font_description_free(object); }
    void operator()(PangoFontMetrics* object) const { pango_font_metrics_unref(object); }
    void operator()(PangoAttrList* object) const { pango_attr_list_unref(object); }
    void operator()(cairo_font_options_t* object) const { cairo_font_options_destroy(object); }
};
template <typename T> using Owned = std::unique_ptr<T, Release>;

double points(int units)
{
    return static_cast<double>(units) / PANGO_SCALE;
}

int units(double points)
{
    return static_cast<int>(points * PANGO_SCALE);
}

Owned<PangoContext> makeContext(PangoFontMap* fonts, PangoLanguage* language, PangoDirection direction)
{
    Owned<PangoContext> context(pango_font_map_create_context(fonts));
    const Owned<cairo_font_options_t> options(cairo_font_options_create());
    cairo_font_options_set_hint_style(options.get(), CAIRO_HINT_STYLE_NONE);
    cairo_font_options_set_hint_metrics(options.get(), CAIRO_HINT_METRICS_OFF);
    pango_cairo_context_set_font_options(context.get(), options.get());
    pango_context_set_round_glyph_positions(context.get(), FALSE);
    pango_context_set_language(context.get(), language);
    pango_context_set_base_dir(context.get(), direction);
    return context;
}

enum class Figures { proportional, tabular };

/// A line ends where the layout of the page ends it: nothing is added there.
Owned<PangoAttrList> makeAttributes(Figures figures)
{
    Owned<PangoAttrList> attributes(pango_attr_list_new());
    pango_attr_list_insert(attributes.get(), pango_attr_insert_hyphens_new(FALSE));
    if (figures == Figures::tabular)
        pango_attr_list_insert(attributes.get(), pango_attr_font_features_new("tnum"));
    return attributes;
}

struct Face {
    Owned<PangoFontDescription> description;
    double ascent = 0;
    double descent = 0;
};

Face makeFace(PangoContext* context, double size, TimesheetWeight weight)
{
    Face face{Owned<PangoFontDescription>(pango_font_description_from_string(family))};
    pango_font_description_set_absolute_size(face.description.get(), size * PANGO_SCALE);
    pango_font_description_set_weight(face.description.get(),
                                      weight == TimesheetWeight::semibold ? PANGO_WEIGHT_SEMIBOLD
                                                                          : PANGO_WEIGHT_NORMAL);
    // Of a language that the family itself has letters for.
    const Owned<PangoFontMetrics> metrics(
        pango_context_get_metrics(context, face.description.get(), pango_language_from_string("en")));
    face.ascent = points(pango_font_metrics_get_ascent(metrics.get()));
    face.descent = points(pango_font_metrics_get_descent(metrics.get()));
    return face;
}

/// The string of a line without the spaces at its end.
std::string_view stringOf(const PangoLayoutLine& line)
{
    std::string_view string(pango_layout_get_text(line.layout) + line.start_index,
                            static_cast<std::size_t>(line.length));
    while (string.ends_with(' '))
        string.remove_suffix(1);
    return string;
}

double widthOf(PangoLayoutLine& line)
{
    PangoRectangle extents;
    pango_layout_line_get_extents(&line, nullptr, &extents);
    return points(extents.width);
}

} // namespace

struct PangoTypesetter::State {
    enum class Paragraphs { byTheirContent, leftToRight, rightToLeft };
    static constexpr double unlimited = -1;

    explicit State(PangoLanguage* language)
        : leftToRight(makeContext(fonts.get(), language, PANGO_DIRECTION_LTR))
        , rightToLeft(makeContext(fonts.get(), language, PANGO_DIRECTION_RTL))
    {
    }

    const Face& face(const TextStyle& style)
    {
        const auto [place, isNew] = faces.try_emplace({style.size, style.weight});
        if (isNew)
            place->second = makeFace(leftToRight.get(), style.size, style.weight);
        return place->second;
    }

    /// Lasts until the next one. Names, dates and rates come again in row after row, and laying a text out is
    /// most of a timesheet's cost, so the last ones are kept.
    PangoLayout* layOut(Paragraphs paragraphs, std::string_view text, const TextStyle& style, double width)
    {
        constexpr std::size_t keptLayouts = 1000;
        if (layouts.size() >= keptLayouts)
            layouts.clear();
        const auto [place, isNew] = layouts.try_emplace(
            {paragraphs, style.size, style.weight, style.tabular, width, std::string(text)});
        if (isNew)
            place->second = makeLayout(paragraphs, text, style, width);
        return place->second.get();
    }

    Owned<PangoLayout> makeLayout(Paragraphs paragraphs, std::string_view text, const TextStyle& style,
                                  double width)
    {
        auto* const context = (paragraphs == Paragraphs::rightToLeft ? rightToLeft : leftToRight).get();
        Owned<PangoLayout> layout(pango_layout_new(context));
        pango_layout_set_auto_dir(layout.get(), paragraphs == Paragraphs::byTheirContent ? TRUE : FALSE);
        pango_layout_set_wrap(layout.get(), PANGO_WRAP_WORD_CHAR);
        pango_layout_set_font_description(layout.get(), face(style).description.get());
        pango_layout_set_attributes(layout.get(), (style.tabular ? tabular : plain).get());
        pango_layout_set_width(layout.get(), width < 0 ? -1 : units(width));
        pango_layout_set_text(layout.get(), text.data(), static_cast<int>(text.size()));
        return layout;
    }

    using LayoutKey = std::tuple<Paragraphs, double, TimesheetWeight, bool, double, std::string>;

    Owned<PangoFontMap> fonts{pango_cairo_font_map_new()};
    Owned<PangoContext> leftToRight;
    Owned<PangoContext> rightToLeft;
    Owned<PangoAttrList> plain = makeAttributes(Figures::proportional);
    Owned<PangoAttrList> tabular = makeAttributes(Figures::tabular);
    std::map<std::pair<double, TimesheetWeight>, Face> faces;
    std::map<LayoutKey, Owned<PangoLayout>> layouts;
};

PangoTypesetter::PangoTypesetter(std::string_view locale)
    : m_state(std::make_unique<State>(pango_language_from_string(std::string(locale).c_str())))
{
}

PangoTypesetter::~PangoTypesetter() = default;

MeasuredText PangoTypesetter::wrapped(std::string_view text, const TextStyle& style, double width)
{
    MeasuredText measured;
    auto* const layout = m_state->layOut(State::Paragraphs::byTheirContent, text, style, width);
    for (const auto* item = pango_layout_get_lines_readonly(layout); item != nullptr; item = item->next) {
        auto& line = *static_cast<PangoLayoutLine*>(item->data);
        measured.lines.push_back({std::string(stringOf(line)), stintbook::widthOf(line)});
        if (measured.lines.size() == 1
            && pango_layout_line_get_resolved_direction(&line) == PANGO_DIRECTION_RTL)
            measured.direction = TimesheetDirection::rightToLeft;
    }
    return measured;
}

double PangoTypesetter::widthOf(std::string_view text, const TextStyle& style)
{
    auto* const layout = m_state->layOut(State::Paragraphs::byTheirContent, text, style, State::unlimited);
    return stintbook::widthOf(*pango_layout_get_line_readonly(layout, 0));
}

void PangoTypesetter::draw(cairo_t* surface, const TimesheetText& text)
{
    const TextStyle style{.size = text.size, .weight = text.weight, .tabular = text.tabular};
    const auto& face = m_state->face(style);
    const auto paragraphs = text.direction == TimesheetDirection::leftToRight
        ? State::Paragraphs::leftToRight
        : State::Paragraphs::rightToLeft;
    double baseline = text.top + (text.lineHeight + face.ascent - face.descent) / 2;
    for (const auto& line : text.lines) {
        auto* const layout = m_state->layOut(paragraphs, line.string, style, State::unlimited);
        cairo_move_to(surface, line.x, baseline);
        pango_cairo_show_layout_line(surface, pango_layout_get_line_readonly(layout, 0));
        baseline += text.lineHeight;
    }
}

} // namespace stintbook
