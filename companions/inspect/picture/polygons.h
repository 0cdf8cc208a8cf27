/// The polygons of a picture.
#pragma once

#include "boundary/model/boundary_model.h"
#include "inspect/picture/view.h"

#include <cairo.h>

namespace veldtrim {

/// Fills each polygon with a transparent colour, so that overlaps look darker.
void fillPolygons(cairo_t* page, const BoundaryModel& model, const View& view);

/// Draws the edges of each polygon.
void outlinePolygons(cairo_t* page, const BoundaryModel& model, const View& view);

} // namespace veldtrim
