/// The shortest bridge from a hole to the rings that are joined already.
#pragma once

#include "area/clear_view.h"
#include "boundary/boundary_segment.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

namespace veldtrim {

/// A line between two sites.
struct Bridge {
    std::uint32_t from;
    std::uint32_t to;
};

class BridgeSearch {
public:
    /// Both arguments must outlive the object.
    BridgeSearch(const std::vector<BoundaryVertex>& sites, const ClearView& view);
    ~BridgeSearch();
    BridgeSearch(const BridgeSearch&) = delete;
    BridgeSearch& operator=(const BridgeSearch&) = delete;

    /// Adds sites to those to which bridges may lead.
    void addTargets(const std::vector<std::uint32_t>& targets);

    /// Returns the shortest clear bridge from any of `starts` to any target: the first clear one of
    /// the pairs in the order of their distances. Adds the number of comparisons to `work`, and
    /// returns nothing when that exceeds `mostWork` or no pair is left.
    [[nodiscard]] std::optional<Bridge> shortest(const std::vector<std::uint32_t>& starts,
                                                 std::size_t& work, std::size_t mostWork) const;

private:
    struct Pair {
        double squaredLength;
        std::uint32_t from;
        std::uint32_t to;
    };
    [[nodiscard]] std::vector<Pair> nearest(std::uint32_t from, std::size_t count) const;

    class Tree;
    const std::vector<BoundaryVertex>& sites_;
    const ClearView& view_;
    std::unique_ptr<Tree> tree_;
};

} // namespace veldtrim
