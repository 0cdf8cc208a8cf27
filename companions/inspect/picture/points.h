/// The points of a picture.
#pragma once

#include "inspect/picture/density.h"
#include "inspect/picture/view.h"

#include <cairo.h>

namespace veldtrim {

/// Draws each point as a dot if `density` has stored all points, else an image of the density of
/// kept and dropped points. `bounds` are those of the points.
void drawPoints(cairo_t* page, const Density& density, const BoundingBox& bounds, const View& view);

} // namespace veldtrim
