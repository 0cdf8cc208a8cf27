/// What is odd about the ring of a polygon.
#pragma once

#include "boundary/boundary_polygon.h"

#include <string>
#include <vector>

namespace veldtrim {

/// The area that the ring encloses, in square units; of a ring that crosses itself, the difference
/// of what it encloses one way and the other.
double areaOf(const BoundaryPolygon& polygon, const std::vector<BoundaryVertex>& vertices);

/// Sentences on a ring that holds nothing, is flat or crosses itself; none for a sound one.
///
/// The search for crossings is given up after a fixed number of comparisons; a sentence then says
/// so.
std::vector<std::string> remarksOn(const BoundaryPolygon& polygon,
                                   const std::vector<BoundaryVertex>& vertices);

} // namespace veldtrim
