#include "boundary/boundary_polygon.h"

#include <cstddef>

namespace veldtrim {

namespace {

const BoundaryVertex& vertexAt(const std::vector<BoundaryVertex>& vertices, std::int32_t index) {
    return vertices[static_cast<std::size_t>(index)];
}

// Not std::min and std::max: with a coordinate that is no number the operands' order decides.
double smaller(double a, double b) {
    return a < b ? a : b;
}
double larger(double a, double b) {
    return a > b ? a : b;
}

} // namespace

void BoundaryPolygon::computeBounds(const std::vector<BoundaryVertex>& vertices) {
    if (vertexIndices.empty()) {
        return;
    }
    const BoundaryVertex& first = vertexAt(vertices, vertexIndices.front());
    bounds = {first.x, first.y, first.x, first.y};
    for (const std::int32_t index : vertexIndices) {
        const BoundaryVertex& vertex = vertexAt(vertices, index);
        bounds.xMin = smaller(bounds.xMin, vertex.x);
        bounds.xMax = larger(bounds.xMax, vertex.x);
        bounds.yMin = smaller(bounds.yMin, vertex.y);
        bounds.yMax = larger(bounds.yMax, vertex.y);
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
