/// The points of a picture.
#pragma once

#include "inspect/picture/density.h"
#include "inspect/picture/view.h"

#include <cairo.h>

namespace veldtrim {

/// Draws each point as a dot where `density` still holds all of them, else an image of how many
/// kept and dropped points lie where. `bounds` are those of the points.
void drawPoints(cairo_t* page, const Density& density, const BoundingBox& bounds, const View& view);

} // namespace veldtrim
