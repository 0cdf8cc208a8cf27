#include "boundary/index/tree_frame.h"

#include "geometry/tolerance.h"

#include <algorithm>
#include <cmath>

namespace veldtrim {

TreeFrame TreeFrame::around(const BoundingBox& vertices) {
    TreeFrame frame;
    const double largest = std::max(std::max(std::abs(vertices.xMin), std::abs(vertices.xMax)),
                                    std::max(std::abs(vertices.yMin), std::abs(vertices.yMax)));
    const double margin = indexMargin(largest);
    frame.margin = margin;
    frame.region = vertices.widenedBy(margin);
    // The root cell is a little larger than the region, so that the region's far border falls into
    // the last cell. It must not be so narrow that the margin exceeds its cells, nor too elongated.
    const double least = std::ldexp(margin, 20);
    frame.width = std::max(frame.region.xMax - frame.region.xMin + 2 * margin, least);
    frame.height = std::max(frame.region.yMax - frame.region.yMin + 2 * margin, least);
    frame.width = std::max(frame.width, std::ldexp(frame.height, -10));
    frame.height = std::max(frame.height, std::ldexp(frame.width, -10));
    constexpr int mostLevels = 28;
    const int levels = std::ilogb(std::min(frame.width, frame.height) / margin) - 6;
    frame.deepest = static_cast<unsigned>(std::min(levels, mostLevels));
    return frame;
}

BoundingBox TreeFrame::boxOf(const CellPlace& place) const {
    const double cellWidth = std::ldexp(width, -static_cast<int>(place.level));
    const double cellHeight = std::ldexp(height, -static_cast<int>(place.level));
    return {region.xMin + place.column * cellWidth, region.yMin + place.row * cellHeight,
            region.xMin + (place.column + 1.0) * cellWidth,
            region.yMin + (place.row + 1.0) * cellHeight};
}

double TreeFrame::xScale() const {
    return std::ldexp(1.0, static_cast<int>(deepest)) / width;
}

double TreeFrame::yScale() const {
    return std::ldexp(1.0, static_cast<int>(deepest)) / height;
}

} // namespace veldtrim
