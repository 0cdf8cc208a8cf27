/// The vertices of a polygon as a closed sequence.
#pragma once

#include "boundary/boundary_polygon.h"

#include <cstddef>
#include <vector>

namespace veldtrim {

/// The cyclic sequence of a polygon's vertices. Positions are those in `vertexIndices`. If the last
/// index equals the first, both stand for the same vertex, which counts once.
class Ring {
public:
    Ring(const BoundaryPolygon& polygon, const std::vector<BoundaryVertex>& vertices)
        : indices_(polygon.vertexIndices), vertices_(vertices),
          namedTwice_(!indices_.empty() && indices_.front() == indices_.back()) {}

    /// The number of vertices, which is also the number of edges.
    [[nodiscard]] std::size_t size() const { return indices_.size() - (namedTwice_ ? 1 : 0); }

    [[nodiscard]] const BoundaryVertex& vertex(std::size_t position) const {
        return vertices_[static_cast<std::size_t>(indices_[position])];
    }

    [[nodiscard]] std::size_t next(std::size_t position) const {
        return position + 1 < indices_.size() ? position + 1 : (namedTwice_ ? 1 : 0);
    }

private:
    const std::vector<std::int32_t>& indices_;
    const std::vector<BoundaryVertex>& vertices_;
    bool namedTwice_;
};

} // namespace veldtrim
