/// Messages of veldtrim-boundary, on standard error.
#pragma once

#include "geometry/bounding_box.h"

#include <cstddef>
#include <string>

namespace veldtrim {

/// Writes a line.
void tell(const std::string& message);

/// Returns the path, or the name of the standard stream that "-" stands for.
std::string nameOfSource(const std::string& argument);
std::string nameOfTarget(const std::string& argument);

/// Returns the number with the noun, which takes an "s" unless the number is 1.
std::string count(std::size_t number, const std::string& noun);

/// Returns the number of vertices and, unless there are none, their bounds.
std::string extent(std::size_t vertices, const BoundingBox& bounds);

} // namespace veldtrim
