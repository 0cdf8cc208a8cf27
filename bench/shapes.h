/// The boundaries that the benchmarks clip to.
#pragma once

#include "boundary/model/boundary_model.h"

#include <string>
#include <vector>

namespace veldtrim::bench {

/// The square that all records lie in, in metres.
inline constexpr double areaWest = 500'000.0;
inline constexpr double areaSouth = 5'400'000.0;
inline constexpr double areaSide = 10'000.0;

using Outline = std::vector<BoundaryVertex>;

/// The polygons of a shape, with coordinates in whole millimetres; the same on every call:
///
/// - `square`: covers half of the area.
/// - `ring-N`: one wavy ring of N vertices with a rough line, which covers half of the area.
/// - `everything`: a square around the area.
/// - `spikes-N`: one ring of N vertices at random distances of 3900 to 4900 m from the middle.
/// - `needles-N`: the same with 100 to 4900 m: nearly no cell of any grid is free of edges.
/// - `polygons-N`: N separate polygons of 20 vertices in rows, which cover half of the area.
/// - `frame-N`: one ring of about N vertices that runs along the outside of the area and back,
///   without closing: the area lies within its bounds, and none of it within the ring.
///
/// Throws std::invalid_argument for any other name.
std::vector<Outline> makeShape(const std::string& name);

/// The model that reading these polygons from a boundary file would give.
BoundaryModel makeModel(const std::vector<Outline>& outlines);

} // namespace veldtrim::bench
