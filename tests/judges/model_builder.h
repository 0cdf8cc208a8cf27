/// Boundary models for tests, polygon by polygon.
#pragma once

#include "boundary/model/boundary_model.h"

#include <vector>

namespace veldtrim::test {

using Ring = std::vector<BoundaryVertex>;

/// Appends `ring` as the boundary reader does: every point becomes a new vertex.
inline void addRing(BoundaryModel& model, const Ring& ring) {
    BoundaryPolygon polygon;
    for (const BoundaryVertex& vertex : ring) {
        polygon.vertexIndices.push_back(model.addVertex(vertex));
    }
    polygon.computeBounds(model.vertices());
    model.addPolygon(polygon);
}

inline BoundaryModel modelOf(const std::vector<Ring>& rings) {
    BoundaryModel model;
    for (const Ring& ring : rings) {
        addRing(model, ring);
    }
    return model;
}

} // namespace veldtrim::test
