/// The part of the workspace that a picture shows, and its place on the page.
#pragma once

#include "geometry/bounding_box.h"
#include "inspect/report.h"

namespace veldtrim {

/// Maps coordinates of the workspace to pixels of the page, whose y grows downwards.
struct View {
    double left = 0.0; ///< of the page, as are the next three
    double top = 0.0;
    double width = 0.0;
    double height = 0.0;
    BoundingBox shown;  ///< of the workspace
    double scale = 1.0; ///< pixels per unit of the workspace

    [[nodiscard]] double right() const { return left + width; }
    [[nodiscard]] double bottom() const { return top + height; }
    [[nodiscard]] double x(double value) const { return left + (value - shown.xMin) * scale; }
    [[nodiscard]] double y(double value) const { return top + (shown.yMax - value) * scale; }
};

/// Whether a coordinate can be drawn: it is a number, and not absurdly large.
bool isDrawable(double value);

/// The bounds of all points and polygons that can be drawn.
BoundingBox boundsOfEverything(const Report& report);

/// The bounds of the points where they meet those of the polygons, since the polygons do not matter
/// elsewhere; else of everything.
BoundingBox boundsOfInterest(const Report& report);

/// A view of `bounds` with some space around them. Its longer side takes `longest` pixels on the
/// page and its shorter side at least `shortest`.
View viewOf(const BoundingBox& bounds, double longest, double shortest);

} // namespace veldtrim
