/// Why the holes of a polygon cannot be joined to its outer ring.
#pragma once

#include "boundary/boundary_segment.h"

#include <cstddef>
#include <stdexcept>
#include <string>

namespace veldtrim {

/// A polygon whose rings do not bound an area. The text is the predicate of a sentence about it,
/// such as "has a hole, number 2, that lies outside the outer ring near (4.5, 7); repair ...".
class HoleFault : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// Returns "the outer ring" for 0, else "hole 1" and so on.
std::string ringName(std::size_t ring);

/// Returns the fault with where it was found and what to do about it appended.
HoleFault holeFaultNear(const std::string& fault, const BoundaryVertex& place);

} // namespace veldtrim
