/// Checks the ring of a polygon.
#pragma once

#include "boundary/boundary_polygon.h"

#include <string>
#include <vector>

namespace veldtrim {

/// Returns the area that the ring encloses, in square units of the boundary file. For a ring that
/// crosses itself, areas enclosed in opposite directions are subtracted from each other.
double areaOf(const BoundaryPolygon& polygon, const std::vector<BoundaryVertex>& vertices);

/// Returns sentences about a ring that contains no point, has coordinates that are not finite, is
/// flat or crosses itself. The result is empty for a sound ring.
///
/// The search for crossings stops after a fixed number of comparisons; a sentence then says so.
std::vector<std::string> remarksOn(const BoundaryPolygon& polygon,
                                   const std::vector<BoundaryVertex>& vertices);

} // namespace veldtrim
