#include "Export/Timesheet/TimesheetDrawing.h"

#include <cmath>
#include <memory>
#include <utility>

#include <cairo-pdf.h>
#include <fmt/format.h>

#include "Domain/CalendarContext.h"
#include "Export/ExportCalendar.h"
#include "Export/Timesheet/PangoTypesetter.h"
#include "Export/Timesheet/TimesheetLayout.h"

namespace stintbook {

namespace {

struct Release {
    void operator()(cairo_surface_t* surface) const { cairo_surface_destroy(surface); }
    void operator()(cairo_t* context) const { cairo_destroy(context); }
};

constexpr double ruleWidth = 0.5;

/// Of black.
double strength(TimesheetInk ink)
{
    return ink == TimesheetInk::ink ? 0.9 : 0.58;
}
constexpr double ruleStrength = 0.25;

void setColour(cairo_t* context, double strengthOfBlack)
{
    cairo_set_source_rgb(context, 1 - strengthOfBlack, 1 - strengthOfBlack, 1 - strengthOfBlack);
}

void draw(cairo_t* context, const TimesheetPage& page, PangoTypesetter& typesetter)
{
    setColour(context, ruleStrength);
    for (const auto& rule : page.rules) {
        cairo_rectangle(context, rule.x, rule.top, rule.width, ruleWidth);
        cairo_fill(context);
    }
    for (const auto& text : page.texts) {
        setColour(context, strength(text.ink));
        typesetter.draw(context, text);
    }
}

/// "2026-11-20T17:00:00Z".
std::string timestamp(Instant at)
{
    const auto time = exportCalendar("UTC").civilTime(at);
    return fmt::format("{}T{:02}:{:02}:{:02}Z", time.date.text(), time.hour, time.minute, time.second);
}

} // namespace

void drawTimesheet(const ExportDocumentModel& document, const ExportRegion& region, Instant generatedAt,
                   DrawnTimesheet& result)
{
    PangoTypesetter typesetter(region.dateLocale);
    const auto layout = layoutTimesheet(document, region, generatedAt, typesetter);

    std::string bytes;
    const auto append = [](void* to, const unsigned char* data, unsigned length) {
        static_cast<std::string*>(to)->append(reinterpret_cast<const char*>(data), length);
        return CAIRO_STATUS_SUCCESS;
    };
    const auto size = pageSize(layout.paper);
    const std::unique_ptr<cairo_surface_t, Release> surface(
        cairo_pdf_surface_create_for_stream(append, &bytes, size.width, size.height));
    cairo_pdf_surface_set_metadata(surface.get(), CAIRO_PDF_METADATA_TITLE, layout.title.c_str());
    cairo_pdf_surface_set_metadata(surface.get(), CAIRO_PDF_METADATA_CREATOR, "Velloran");
    // Otherwise the file would hold the time of its making.
    cairo_pdf_surface_set_metadata(surface.get(), CAIRO_PDF_METADATA_CREATE_DATE,
                                   timestamp(generatedAt).c_str());

    const std::unique_ptr<cairo_t, Release> context(cairo_create(surface.get()));
    for (const auto& page : layout.pages) {
        draw(context.get(), page, typesetter);
        cairo_show_page(context.get());
    }
    cairo_surface_finish(surface.get());
    for (const auto status : {cairo_status(context.get()), cairo_surface_status(surface.get())}) {
        if (status != CAIRO_STATUS_SUCCESS)
            result = std::unexpected(TimesheetProblem{cairo_status_to_string(status)});
    }
    if (result)
        result = std::move(bytes);
}

void layOutTimesheet(const ExportDocumentModel& document, const ExportRegion& region, Instant generatedAt,
                     TimesheetLayout& result)
{
    PangoTypesetter typesetter(region.dateLocale);
    result = layoutTimesheet(document, region, generatedAt, typesetter);
}

void drawTimesheetPage(const TimesheetPage& page, const ExportRegion& region, int width,
                       DrawnTimesheetPage& result)
{
    const auto size = pageSize(region.paper);
    const auto scale = width / size.width;
    auto& picture = *result;
    picture = {.width = width, .height = static_cast<int>(std::lround(size.height * scale)), .pixels = {}};
    picture.pixels.assign(static_cast<std::size_t>(picture.width) * static_cast<std::size_t>(picture.height),
                          0xffffffff);
    const std::unique_ptr<cairo_surface_t, Release> surface(cairo_image_surface_create_for_data(
        reinterpret_cast<unsigned char*>(picture.pixels.data()), CAIRO_FORMAT_RGB24, picture.width,
        picture.height, picture.width * 4));
    const std::unique_ptr<cairo_t, Release> context(cairo_create(surface.get()));
    cairo_scale(context.get(), scale, scale);
    PangoTypesetter typesetter(region.dateLocale);
    draw(context.get(), page, typesetter);
    cairo_surface_flush(surface.get());
    if (const auto status = cairo_status(context.get()); status != CAIRO_STATUS_SUCCESS)
        result = std::unexpected(TimesheetProblem{cairo_status_to_string(status)});
}

} // namespace stintbook
