#include "inspect/picture/polygons.h"

#include "inspect/picture/drawing.h"

#include <cstddef>
#include <cstdint>

namespace veldtrim {

namespace {

void tracePolygon(cairo_t* page, const BoundaryPolygon& polygon,
                  const std::vector<BoundaryVertex>& vertices, const View& view) {
    cairo_new_path(page);
    for (const std::int32_t index : polygon.vertexIndices) {
        const BoundaryVertex& vertex = vertices[static_cast<std::size_t>(index)];
        if (isDrawable(vertex.x) && isDrawable(vertex.y)) {
            cairo_line_to(page, view.x(vertex.x), view.y(vertex.y));
        }
    }
    cairo_close_path(page);
}

} // namespace

void fillPolygons(cairo_t* page, const BoundaryModel& model, const View& view) {
    cairo_set_fill_rule(page, CAIRO_FILL_RULE_EVEN_ODD);
    setColour(page, outlineColour, fillAlpha);
    for (const BoundaryPolygon& polygon : model.polygons()) {
        tracePolygon(page, polygon, model.vertices(), view);
        cairo_fill(page);
    }
}

void outlinePolygons(cairo_t* page, const BoundaryModel& model, const View& view) {
    setColour(page, outlineColour);
    cairo_set_line_width(page, 1.5);
    cairo_set_line_join(page, CAIRO_LINE_JOIN_ROUND);
    for (const BoundaryPolygon& polygon : model.polygons()) {
        tracePolygon(page, polygon, model.vertices(), view);
        cairo_stroke(page);
    }
}

} // namespace veldtrim
