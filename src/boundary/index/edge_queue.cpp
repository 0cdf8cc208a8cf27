#include "boundary/index/edge_queue.h"

#include "boundary/edge_crossing.h"

#include <algorithm>

namespace veldtrim {

namespace {

/// An edge, and its x coordinates at the lowest and highest height of the queue.
struct Passer {
    IndexEdge edge;
    double atLow;
    double atHigh;
};

} // namespace

std::size_t queueUp(std::vector<IndexEdge>& edges, const std::vector<BoundaryVertex>& ringVertices,
                    double yLow, double yHigh) {
    std::vector<Passer> passers;
    std::vector<IndexEdge> others;
    for (const IndexEdge edge : edges) {
        const BoundaryVertex& from = ringVertices[edge.number()];
        const BoundaryVertex& to = ringVertices[edge.number() + 1];
        if (std::min(from.y, to.y) < yLow && std::max(from.y, to.y) > yHigh) {
            passers.push_back({edge, crossingAt(from, to, yLow), crossingAt(from, to, yHigh)});
        } else {
            others.push_back(edge);
        }
    }
    std::sort(passers.begin(), passers.end(), [](const Passer& a, const Passer& b) {
        return a.atLow + a.atHigh < b.atLow + b.atHigh;
    });
    edges.clear();
    double lastLow = 0.0;
    double lastHigh = 0.0;
    for (const Passer& passer : passers) {
        if (edges.empty() || (passer.atLow >= lastLow && passer.atHigh >= lastHigh)) {
            edges.push_back(passer.edge);
            lastLow = passer.atLow;
            lastHigh = passer.atHigh;
        } else {
            others.push_back(passer.edge); // crosses an edge of the queue
        }
    }
    const std::size_t size = edges.size();
    edges.insert(edges.end(), others.begin(), others.end());
    return size;
}

} // namespace veldtrim
