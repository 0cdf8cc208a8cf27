#include "boundary/index/cell_splitter.h"
#include "boundary/index/edge_queue.h"
#include "boundary/index/flatten.h"
#include "boundary/index/gather_polygons.h"
#include "boundary/index/point_index_data.h"
#include "boundary/index/tree_frame.h"

#include <algorithm>
#include <cstddef>
#include <optional>

namespace veldtrim {

namespace {

/// A cell with no more words than this is not worth splitting, unless it is a large part of the
/// plane, as in models of a few edges.
constexpr std::size_t leafWords = 5;
constexpr unsigned smallLevel = 6;

/// A leaf with at least this many edges of one polygon puts those that can form a queue into one.
constexpr std::size_t queueEdges = 16;

/// The budget of all leaves, in words per edge. It bounds the memory if many long edges lie close
/// to each other.
constexpr std::size_t wordsPerEdge = 24;
constexpr std::size_t leastWords = std::size_t{1} << 14U;
constexpr std::size_t mostWords = std::size_t{1} << 30U;

/// Splits the root cell recursively into leaves.
class TreeBuilder {
public:
    TreeBuilder(std::span<const BoundaryPolygon> polygons, const TreeFrame& frame,
                PointIndexData& data)
        : frame_(frame), data_(data), splitter_(polygons, data.ringVertices, frame.margin),
          quartersOfLevel_(frame.deepest) {}

    /// Builds the tree below a cell and returns the cell. Its leaves may have `wordBudget` words in
    /// total. Splitting a cell about doubles its words if long edges pass through it.
    Cell build(const GroupList& groups, const CellPlace& place, std::size_t wordBudget);

private:
    Cell split(const GroupList& groups, const CellPlace& place, std::size_t wordBudget);
    Cell makeLeaf(const GroupList& groups, const CellPlace& place);
    void addWithQueue(const Group& group, const CellPlace& place, LeafWriter& leaf) const;

    const TreeFrame& frame_;
    PointIndexData& data_;
    CellSplitter splitter_;

    /// One set of quarters per level of the tree, which all cells of that level reuse.
    std::vector<Quarters> quartersOfLevel_;
};

/// Returns the groups as a run, or nothing if they are not a few successive edges of one ring.
std::optional<Run> makeRun(const GroupList& groups) {
    if (groups.count() != 1) {
        return std::nullopt;
    }
    const Group group = groups.read().next();
    if (group.head.isLine() || group.edges.size() > Run::longest) {
        return std::nullopt;
    }
    const Word first = group.edges[0].number();
    Run run(first, group.edges.size(), group.head.odd());
    for (std::size_t i = 0; i < group.edges.size(); ++i) {
        if (group.edges[i].number() != first + i) {
            return std::nullopt;
        }
        run.setEnds(i, group.edges[i].ends());
    }
    return run;
}

// NOLINTNEXTLINE(misc-no-recursion): the tree has no more levels than its frame allows
Cell TreeBuilder::build(const GroupList& groups, const CellPlace& place, std::size_t wordBudget) {
    if ((groups.wordCount() > leafWords || place.level < smallLevel) &&
        place.level < frame_.deepest && 2 * groups.wordCount() <= wordBudget) {
        return split(groups, place, wordBudget);
    }
    const std::optional<Run> run = makeRun(groups);
    return run ? Cell::ofRun(*run) : makeLeaf(groups, place);
}

// NOLINTNEXTLINE(misc-no-recursion): see build
Cell TreeBuilder::split(const GroupList& groups, const CellPlace& place, std::size_t wordBudget) {
    Quarters& quarters = quartersOfLevel_[place.level];
    for (std::uint32_t i = 0; i < 4; ++i) {
        quarters[i].reset(frame_.boxOf(place.quarter(i)));
    }
    splitter_.split(groups, quarters);

    std::size_t words = 0;
    for (const Quarter& quarter : quarters) {
        words += quarter.isFilled ? 0 : quarter.groups.wordCount();
    }
    const double share = static_cast<double>(wordBudget) / static_cast<double>(words);
    const std::size_t first = data_.quarters.size();
    data_.quarters.resize(first + quarters.size());
    for (std::uint32_t i = 0; i < 4; ++i) {
        const Quarter& quarter = quarters[i];
        if (quarter.isFilled) {
            data_.quarters[first + i] = Cell::inside();
        } else if (!quarter.groups.empty()) {
            const double budget = share * static_cast<double>(quarter.groups.wordCount());
            const Cell cell =
                build(quarter.groups, place.quarter(i), static_cast<std::size_t>(budget));
            data_.quarters[first + i] = cell;
        }
    }
    return Cell::splitAt(first);
}

Cell TreeBuilder::makeLeaf(const GroupList& groups, const CellPlace& place) {
    LeafWriter leaf(data_.leaves);
    for (auto reader = groups.read(); !reader.atEnd();) {
        const Group group = reader.next();
        if (group.head.isLine()) {
            leaf.addLine(group.number);
        } else if (group.edges.size() < queueEdges) {
            leaf.addRing(group.edges, group.head.odd());
        } else {
            addWithQueue(group, place, leaf);
        }
    }
    return Cell::leafAt(leaf.position());
}

void TreeBuilder::addWithQueue(const Group& group, const CellPlace& place, LeafWriter& leaf) const {
    std::vector<IndexEdge> edges;
    edges.reserve(group.edges.size());
    for (const IndexEdge edge : group.edges) {
        edges.push_back(edge);
    }
    const BoundingBox box = frame_.boxOf(place);
    const std::size_t queued =
        queueUp(edges, data_.ringVertices, box.yMin - frame_.margin, box.yMax + frame_.margin);
    leaf.addQueue(edges, queued, group.head.odd());
}

} // namespace

PointIndexData buildPointIndex(std::span<const BoundaryPolygon> polygons,
                               const std::vector<BoundaryVertex>& vertices) {
    PointIndexData data;
    const GatheredPolygons gathered = gatherPolygons(polygons, vertices, data);
    if (gathered.groups.empty()) {
        flattenTree(Cell(), 0, data);
        return data;
    }
    const TreeFrame frame = TreeFrame::around(gathered.box);
    data.region = frame.region;
    data.xScale = frame.xScale();
    data.yScale = frame.yScale();
    data.margin = frame.margin;
    const std::size_t budget =
        std::clamp(wordsPerEdge * data.ringVertices.size() + gathered.groups.wordCount(),
                   leastWords, mostWords);
    data.leaves.reserve(budget); // unused capacity takes no physical memory
    data.quarters.reserve(2 * data.ringVertices.size());
    const Cell root = TreeBuilder(polygons, frame, data).build(gathered.groups, {}, budget);
    flattenTree(root, frame.deepest, data);
    return data;
}

} // namespace veldtrim
