#include "boundary/boundary_polygon.h"

#include <cstddef>

namespace veldtrim {

namespace {

const BoundaryVertex& vertexAt(const std::vector<BoundaryVertex>& vertices, std::int32_t index) {
    return vertices[static_cast<std::size_t>(index)];
}

} // namespace

void BoundaryPolygon::computeBounds(const std::vector<BoundaryVertex>& vertices) {
    if (vertexIndices.empty()) {
        return;
    }
    bounds = BoundingBox::empty();
    for (const std::int32_t index : vertexIndices) {
        const BoundaryVertex& vertex = vertexAt(vertices, index);
        bounds.add(vertex.x, vertex.y);
    }
}

void BoundaryPolygon::buildSegments(const std::vector<BoundaryVertex>& vertices) {
    segments.clear();
    for (std::size_t i = 1; i < vertexIndices.size(); ++i) {
        segments.emplace_back(vertexAt(vertices, vertexIndices[i - 1]),
                              vertexAt(vertices, vertexIndices[i]));
    }
}

} // namespace veldtrim
