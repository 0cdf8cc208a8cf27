/// The legend of a picture.
#pragma once

#include "inspect/inspection.h"
#include "inspect/picture/view.h"

#include <cairo.h>

namespace veldtrim {

/// The space that the legend takes, in pixels.
constexpr double legendWidth = 270.0;
constexpr double legendHeight = 540.0;

/// Writes what a run keeps, and what the colours mean, to the right of `view`. If polygons reach
/// beyond the view, adds a small map of everything that shows where the view is.
void drawLegend(cairo_t* page, const Inspection& inspection, const View& view);

} // namespace veldtrim
