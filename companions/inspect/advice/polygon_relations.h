/// Remarks on polygons that enclose each other or share edges.
#pragma once

#include "boundary/model/boundary_model.h"
#include "inspect/polygon_finder.h"

#include <cstdint>
#include <string>
#include <vector>

namespace veldtrim {

/// A sentence about one polygon.
struct PolygonRemark {
    std::size_t polygon = 0; ///< its position in the model
    std::string text;
};

/// Returns sentences about polygons inside others, which do not cut holes, and about polygons that
/// share an edge that is neither horizontal nor vertical. `ids` are the ids of the polygons.
///
/// Compares at most a fixed number of vertices, so that very large models may get fewer sentences.
std::vector<PolygonRemark> remarksOnRelations(const BoundaryModel& model, PolygonFinder& finder,
                                              const std::vector<std::int32_t>& ids);

} // namespace veldtrim
