/// The part of the workspace that a picture shows, and its place on the page.
#pragma once

#include "geometry/bounding_box.h"
#include "inspect/report.h"

namespace veldtrim {

/// Maps coordinates of the workspace to pixels of the page, whose y grows downwards.
struct View {
    double left = 0.0; ///< in pixels of the page, like the next three
    double top = 0.0;
    double width = 0.0;
    double height = 0.0;
    BoundingBox shown;  ///< in the units of the workspace
    double scale = 1.0; ///< pixels per unit of the workspace

    [[nodiscard]] double right() const { return left + width; }
    [[nodiscard]] double bottom() const { return top + height; }
    [[nodiscard]] double x(double value) const { return left + (value - shown.xMin) * scale; }
    [[nodiscard]] double y(double value) const { return top + (shown.yMax - value) * scale; }
};

/// Whether a coordinate can be drawn: it is a number and does not exceed largestCoordinate.
bool isDrawable(double value);

/// Returns the bounds of all points and polygons, without those that cannot be drawn.
BoundingBox boundsOfEverything(const Report& report);

/// Returns the bounds of the points if they overlap those of the polygons, because polygons do not
/// matter elsewhere; else the bounds of everything.
BoundingBox boundsOfInterest(const Report& report);

/// Returns a view of `bounds` with some space around them. Its longer side takes `longest` pixels
/// on the page and its shorter side at least `shortest`.
View viewOf(const BoundingBox& bounds, double longest, double shortest);

} // namespace veldtrim
