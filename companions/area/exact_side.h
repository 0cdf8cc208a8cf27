/// On which side of a line a point lies.
#pragma once

#include "boundary/boundary_segment.h"

namespace veldtrim {

/// Returns 1 if `point` lies to the left of the line from `from` to `to`, -1 if to its right, and 0
/// if exactly on it. The result is exact for coordinates that are 0 or between 1e-100 and 1e100 in
/// size.
///
/// Computes the determinant in floating point first and exactly only if its error bound allows
/// either sign: J. R. Shewchuk, "Adaptive Precision Floating-Point Arithmetic and Fast Robust
/// Geometric Predicates", Discrete & Computational Geometry 18, 1997.
int sideOf(const BoundaryVertex& from, const BoundaryVertex& to, const BoundaryVertex& point);

} // namespace veldtrim
