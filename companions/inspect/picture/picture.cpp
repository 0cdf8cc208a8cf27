#include "inspect/picture/picture.h"

#include "inspect/picture/drawing.h"
#include "inspect/picture/frame.h"
#include "inspect/picture/legend.h"
#include "inspect/picture/points.h"
#include "inspect/picture/polygons.h"
#include "inspect/picture/surface.h"
#include "inspect/picture/view.h"

#include <cairo-svg.h>

#include <algorithm>
#include <stdexcept>
#include <string_view>

namespace veldtrim {

namespace {

void check(cairo_status_t status, const std::string& path) {
    if (status != CAIRO_STATUS_SUCCESS) {
        throw std::runtime_error("cannot write the picture " + path + ": " +
                                 cairo_status_to_string(status));
    }
}

void fillBackground(cairo_t* page, double width, double height) {
    cairo_set_source_rgb(page, 1.0, 1.0, 1.0);
    cairo_rectangle(page, 0.0, 0.0, width, height);
    cairo_fill(page);
}

void drawContent(cairo_t* page, const Inspection& inspection, const View& view) {
    cairo_save(page);
    cairo_rectangle(page, view.left, view.top, view.width, view.height);
    cairo_clip(page);
    fillPolygons(page, inspection.model, view);
    drawPoints(page, *inspection.density, inspection.report.pointBounds, view);
    outlinePolygons(page, inspection.model, view);
    cairo_restore(page);
    drawFrame(page, view);
    drawLegend(page, inspection, view);
}

} // namespace

void drawPicture(const Inspection& inspection, const std::string& path) {
    // Even a narrow strip of points gets a view that is wide enough to see.
    constexpr double longestSide = 860.0;
    constexpr double shortestSide = 330.0;
    const View view = viewOf(boundsOfInterest(inspection.report), longestSide, shortestSide);
    const double width = view.right() + margin + legendWidth;
    const double height = view.top + std::max(view.height, legendHeight) + axisSpace + 8.0;
    const bool isSvg = std::string_view(path).ends_with(".svg");
    const Surface surface(isSvg ? cairo_svg_surface_create(path.c_str(), width, height)
                                : cairo_image_surface_create(CAIRO_FORMAT_RGB24,
                                                             static_cast<int>(width),
                                                             static_cast<int>(height)));
    check(cairo_surface_status(surface.get()), path);
    {
        const Page page(cairo_create(surface.get()));
        fillBackground(page.get(), width, height);
        drawContent(page.get(), inspection, view);
        check(cairo_status(page.get()), path);
    }
    if (!isSvg) {
        check(cairo_surface_write_to_png(surface.get(), path.c_str()), path);
    }
    cairo_surface_finish(surface.get());
    check(cairo_surface_status(surface.get()), path);
}

} // namespace veldtrim
