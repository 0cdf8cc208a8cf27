/// Whether a bridge between two vertices would cross or touch anything.
#pragma once

#include "area/ring_sweep.h"
#include "area/ring_table.h"
#include "boundary/boundary_segment.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

namespace veldtrim {

/// The edges of a polygon and the bridges made so far, searchable by place (A. Guttman, "R-trees: a
/// dynamic index structure for spatial searching", SIGMOD 1984).
class ClearView {
public:
    /// All arguments must outlive the object.
    ClearView(const std::vector<BoundaryVertex>& sites, const std::vector<SiteEdge>& edges,
              const SweptRings& swept);
    ~ClearView();
    ClearView(const ClearView&) = delete;
    ClearView& operator=(const ClearView&) = delete;

    /// Whether the line between two different sites either lies in the area and touches no site,
    /// edge or bridge between its ends, or lies on an edge with no site between its ends. Adds the
    /// number of comparisons to `work`.
    [[nodiscard]] bool isClear(std::uint32_t from, std::uint32_t to, std::size_t& work) const;

    /// Adds an obstacle.
    void addBridge(std::uint32_t from, std::uint32_t to);

private:
    enum class Start { Blocked, InArea, OnEdge };
    [[nodiscard]] Start startOf(std::uint32_t left, std::uint32_t right) const;
    [[nodiscard]] bool touches(const SiteEdge& edge, std::uint32_t left, std::uint32_t right) const;

    class Tree;
    const std::vector<BoundaryVertex>& sites_;
    const SweptRings& swept_;
    std::unique_ptr<Tree> tree_;
};

} // namespace veldtrim
