#include "boundary/index/point_index_builder.h"

#include "boundary/edge_crossing.h"
#include "boundary/index/edge_queue.h"
#include "geometry/tolerance.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <limits>

namespace veldtrim {

namespace {

/// How far beyond its ends a flat polygon holds points: the tolerance of boundsContain, and a
/// little for its rounding.
constexpr double flatReach = 1.0001 * pretestTolerance;

/// A cell with no more words than this is not worth splitting.
constexpr std::size_t leafWords = 5;

/// From this many edges of one polygon on, a leaf puts those in a queue that can stand in one.
constexpr std::ptrdiff_t queueEdges = 16;

/// Words of leaves for each edge: bounds the memory where many long edges lie close to each other.
constexpr std::size_t wordsPerEdge = 24;
constexpr std::size_t mostWords = std::size_t{1} << 30U;

/// An edge that rises less has its whole width at each of its heights: the quotient in the crossing
/// abscissa could underflow.
constexpr double smallestRise = 1e-140;

struct Interval {
    double low;
    double high;
};

/// The abscissas of the part of an edge between two heights.
Interval clip(const BoundaryVertex* ends, double yLow, double yHigh) {
    const bool rises = ends[0].y < ends[1].y;
    const BoundaryVertex& lower = ends[rises ? 0 : 1];
    const BoundaryVertex& upper = ends[rises ? 1 : 0];
    double atLow = lower.x;
    double atHigh = upper.x;
    const double rise = upper.y - lower.y;
    if (rise >= smallestRise && (lower.y < yLow || upper.y > yHigh)) {
        const double slope = (upper.x - lower.x) / rise;
        if (lower.y < yLow) {
            atLow = lower.x + (yLow - lower.y) * slope;
        }
        if (upper.y > yHigh) {
            atHigh = lower.x + (yHigh - lower.y) * slope;
        }
    }
    return {std::min(atLow, atHigh), std::max(atLow, atHigh)};
}

/// The parity that the counting ends of an edge add at a height.
cells::Word endsBelow(cells::Word edge, const BoundaryVertex* ends, double y) {
    return (edge & (ends[0].y < y ? 1U : 0U)) ^ ((edge >> 1U) & (ends[1].y < y ? 1U : 0U));
}

} // namespace

void PointIndexBuilder::build() {
    const Words groups = addPolygons();
    Cell root = cells::outside;
    if (!groups.empty()) {
        setScale();
        childrenOfLevel_.resize(deepest_);
        const std::size_t budget =
            std::min(mostWords, wordsPerEdge * index_.ringVertices_.size() + groups.size());
        index_.leaves_.reserve(budget); // room that is not used costs no memory
        index_.quads_.reserve(2 * index_.ringVertices_.size());
        root = buildCell(groups, {0, 0, 0}, budget);
    }
    flatten(root);
}

PointIndexBuilder::Words PointIndexBuilder::addPolygons() {
    constexpr double infinity = std::numeric_limits<double>::infinity();
    index_.region_ = {infinity, infinity, -infinity, -infinity};
    index_.ringVertices_.reserve(vertices_.size() + 2 * polygons_.size());
    Words groups;
    groups.reserve(vertices_.size() + 3 * polygons_.size());
    for (std::size_t i = 0; i < polygons_.size(); ++i) {
        const BoundaryPolygon& polygon = polygons_[i];
        const BoundingBox& bounds = polygon.bounds;
        const Ring ring(polygon, vertices_);
        if (polygon.vertexIndices.empty() || ring.size() < 2) {
            continue; // holds no point
        }
        const auto number = static_cast<Word>(i);
        if (!isIndexable(ring, bounds)) {
            index_.unindexed_.push_back(number);
        } else if (ring.size() == 2) {
            addWhole(groups, ring.vertex(0), ring.vertex(1), number);
        } else if (bounds.yMin == bounds.yMax) {
            addWhole(groups, {bounds.xMin - flatReach, bounds.yMin},
                     {bounds.xMax + flatReach, bounds.yMin}, number);
        } else {
            addRing(groups, ring, number);
        }
    }
    return groups;
}

/// Whether cells can stand for the polygon's pretest: its bounds are exactly those of the vertices,
/// and all of these are numbers of a usual size.
bool PointIndexBuilder::isIndexable(const Ring& ring, const BoundingBox& bounds) const {
    BoundingBox actual{ring.vertex(0).x, ring.vertex(0).y, ring.vertex(0).x, ring.vertex(0).y};
    for (std::size_t i = 0; i < ring.size(); ++i) {
        const BoundaryVertex& vertex = ring.vertex(i);
        if (!(std::abs(vertex.x) <= largestCoordinate && std::abs(vertex.y) <= largestCoordinate)) {
            return false;
        }
        actual.xMin = std::min(actual.xMin, vertex.x);
        actual.xMax = std::max(actual.xMax, vertex.x);
        actual.yMin = std::min(actual.yMin, vertex.y);
        actual.yMax = std::max(actual.yMax, vertex.y);
    }
    return bounds.xMin == actual.xMin && bounds.xMax == actual.xMax && bounds.yMin == actual.yMin &&
           bounds.yMax == actual.yMax;
}

void PointIndexBuilder::addRing(Words& groups, const Ring& ring, Word number) {
    groups.push_back(static_cast<Word>(ring.size()) << cells::groupBits);
    groups.push_back(number);
    for (std::size_t i = 0; i < ring.size(); ++i) {
        groups.push_back(static_cast<Word>(index_.ringVertices_.size()) << cells::edgeBits);
        addVertex(ring.vertex(i));
    }
    addVertex(ring.vertex(0));
}

/// Adds a polygon that is asked as a whole wherever the line between two points passes.
void PointIndexBuilder::addWhole(Words& groups, const BoundaryVertex& from,
                                 const BoundaryVertex& to, Word number) {
    groups.push_back(1U << cells::groupBits | cells::groupWhole);
    groups.push_back(number);
    groups.push_back(static_cast<Word>(index_.ringVertices_.size()) << cells::edgeBits);
    addVertex(from);
    addVertex(to);
}

void PointIndexBuilder::addVertex(const BoundaryVertex& vertex) {
    index_.ringVertices_.push_back(vertex);
    BoundingBox& region = index_.region_;
    region.xMin = std::min(region.xMin, vertex.x);
    region.xMax = std::max(region.xMax, vertex.x);
    region.yMin = std::min(region.yMin, vertex.y);
    region.yMax = std::max(region.yMax, vertex.y);
}

void PointIndexBuilder::setScale() {
    BoundingBox& region = index_.region_;
    const double largest = std::max(std::max(std::abs(region.xMin), std::abs(region.xMax)),
                                    std::max(std::abs(region.yMin), std::abs(region.yMax)));
    margin_ = indexMargin(largest);
    index_.margin_ = margin_;
    region = {region.xMin - margin_, region.yMin - margin_, region.xMax + margin_,
              region.yMax + margin_};
    // A little more than the region, so that its far border still falls into the last cell; and
    // neither so narrow that its cells would be lost in the margin, nor all too long.
    const double least = std::ldexp(margin_, 20);
    width_ = std::max(region.xMax - region.xMin + 2 * margin_, least);
    height_ = std::max(region.yMax - region.yMin + 2 * margin_, least);
    width_ = std::max(width_, std::ldexp(height_, -10));
    height_ = std::max(height_, std::ldexp(width_, -10));
    constexpr int mostLevels = 28;
    const int levels = std::ilogb(std::min(width_, height_) / margin_) - 6;
    deepest_ = static_cast<unsigned>(std::min(levels, mostLevels));
    index_.xScale_ = std::ldexp(1.0, static_cast<int>(deepest_)) / width_;
    index_.yScale_ = std::ldexp(1.0, static_cast<int>(deepest_)) / height_;
}

/// Builds the tree below a cell. Its leaves may have `wordBudget` words in all; the words of a cell
/// that long edges pass through about double when it is split.
// NOLINTNEXTLINE(misc-no-recursion): the tree has no more levels than setScale allows
PointIndexBuilder::Cell PointIndexBuilder::buildCell(const Words& groups, const Place& place,
                                                     std::size_t wordBudget) {
    if (groups.size() > leafWords && place.level < deepest_ && 2 * groups.size() <= wordBudget) {
        return split(groups, place, wordBudget);
    }
    const Cell run = makeRun(groups);
    return run != cells::outside ? run : makeLeaf(groups, place);
}

/// A few successive edges of one ring as a cell of their own; `outside` if there are others.
PointIndexBuilder::Cell PointIndexBuilder::makeRun(const Words& groups) const {
    const Word head = groups[0];
    const Word size = head >> cells::groupBits;
    if (size > cells::longestRun || groups.size() != size + 2 || (head & cells::groupWhole) != 0) {
        return cells::outside;
    }
    const Word* const edges = groups.data() + 2;
    const Word first = edges[0] >> cells::edgeBits;
    Cell run = cells::run | Cell{head & cells::groupOdd} << cells::runOddShift |
               Cell{size} << cells::runSizeShift | Cell{first} << cells::runEdgeShift;
    for (Word i = 0; i < size; ++i) {
        if (edges[i] >> cells::edgeBits != first + i) {
            return cells::outside;
        }
        run |= Cell{edges[i] & cells::endsMask} << (cells::runEndsShift + i * cells::edgeBits);
    }
    return run;
}

PointIndexBuilder::Cell PointIndexBuilder::makeLeaf(const Words& groups, const Place& place) {
    Words& leaves = index_.leaves_;
    const std::size_t start = leaves.size();
    leaves.push_back(0);
    const Word* word = groups.data();
    const Word* const end = word + groups.size();
    while (word != end) {
        const Word head = *word++;
        const Word polygon = *word++;
        const Word* const edgesEnd = word + (head >> cells::groupBits);
        if ((head & cells::groupWhole) != 0) {
            leaves.push_back(cells::groupWhole);
            leaves.push_back(polygon);
        } else if (edgesEnd - word < queueEdges) {
            leaves.push_back(head);
            leaves.insert(leaves.end(), word, edgesEnd);
        } else {
            Words edges(word, edgesEnd);
            const BoundingBox box = boxOf(place);
            const std::size_t queued =
                queueUp(edges, index_.ringVertices_, box.yMin - margin_, box.yMax + margin_);
            leaves.push_back(static_cast<Word>(edges.size() - queued) << cells::groupBits |
                             (head & cells::groupOdd) | cells::groupQueue);
            leaves.push_back(static_cast<Word>(queued));
            leaves.insert(leaves.end(), edges.begin(), edges.end());
        }
        ++leaves[start];
        word = edgesEnd;
    }
    return Cell{start} << cells::kindBits | cells::leaf;
}

BoundingBox PointIndexBuilder::boxOf(const Place& place) const {
    const double width = std::ldexp(width_, -static_cast<int>(place.level));
    const double height = std::ldexp(height_, -static_cast<int>(place.level));
    const BoundingBox& region = index_.region_;
    return {region.xMin + place.column * width, region.yMin + place.row * height,
            region.xMin + (place.column + 1.0) * width, region.yMin + (place.row + 1.0) * height};
}

// NOLINTNEXTLINE(misc-no-recursion): see buildCell
PointIndexBuilder::Cell PointIndexBuilder::split(const Words& groups, const Place& place,
                                                 std::size_t wordBudget) {
    const auto placeOf = [&](std::uint32_t i) {
        return Place{place.level + 1, 2 * place.column + i % 2, 2 * place.row + i / 2};
    };
    Children& children = childrenOfLevel_[place.level];
    for (std::uint32_t i = 0; i < 4; ++i) {
        Child& child = children[i];
        child.box = boxOf(placeOf(i));
        child.xCentre = 0.5 * (child.box.xMin + child.box.xMax);
        child.yCentre = 0.5 * (child.box.yMin + child.box.yMax);
        child.filled = false;
        child.groups.clear();
    }
    distribute(groups, children);

    std::size_t words = 0;
    for (const Child& child : children) {
        words += child.filled ? 0 : child.groups.size();
    }
    const std::size_t quad = index_.quads_.size();
    index_.quads_.resize(quad + 4);
    const double share = static_cast<double>(wordBudget) / static_cast<double>(words);
    for (std::uint32_t i = 0; i < 4; ++i) {
        const Child& child = children[i];
        Cell cell = child.filled ? cells::inside : cells::outside;
        if (!child.filled && !child.groups.empty()) {
            const double budget = share * static_cast<double>(child.groups.size());
            cell = buildCell(child.groups, placeOf(i), static_cast<std::size_t>(budget));
        }
        index_.quads_[quad + i] = cell;
    }
    return Cell{quad} << cells::kindBits | cells::split;
}

/// Gives each child the groups of its own: the edges in it, and the parity of all others.
void PointIndexBuilder::distribute(const Words& groups, Children& children) const {
    const Word* word = groups.data();
    const Word* const end = word + groups.size();
    while (word != end) {
        const Word head = *word++;
        const Word polygon = *word++;
        const bool isWhole = (head & cells::groupWhole) != 0;
        // What is asked as a whole may hold points a little outside its bounds.
        Child* const only = isWhole ? nullptr : onlyChildOf(polygon, children);
        if (only != nullptr) {
            const Word* const edgesEnd = word + (head >> cells::groupBits);
            only->groups.insert(only->groups.end(), word - 2, edgesEnd);
            word = edgesEnd;
            continue;
        }
        for (Child& child : children) {
            child.head = child.groups.size();
            child.groups.push_back(0);
            child.groups.push_back(polygon);
            child.odd = head & cells::groupOdd;
        }
        for (const Word* const edgesEnd = word + (head >> cells::groupBits); word != edgesEnd;) {
            splitEdge(*word++, children);
        }
        for (Child& child : children) {
            const std::size_t edges = child.groups.size() - child.head - 2;
            if (edges == 0) {
                child.groups.resize(child.head);
                child.filled = child.filled || (!isWhole && child.odd != 0);
            } else {
                child.groups[child.head] = static_cast<Word>(edges) << cells::groupBits |
                                           (isWhole ? cells::groupWhole : child.odd);
            }
        }
    }
}

/// The one child that the polygon's bounds come near; null when there are several.
///
/// The group can be given to it as it is: what it says of the points of this cell holds for those
/// of a part of it. All points of the other children lie outside the polygon.
PointIndexBuilder::Child* PointIndexBuilder::onlyChildOf(Word polygon, Children& children) const {
    const BoundingBox& bounds = polygons_[polygon].bounds;
    Child* only = nullptr;
    for (Child& child : children) {
        const BoundingBox& box = child.box;
        if (bounds.xMax + margin_ >= box.xMin && bounds.xMin - margin_ <= box.xMax &&
            bounds.yMax + margin_ >= box.yMin && bounds.yMin - margin_ <= box.yMax) {
            if (only != nullptr) {
                return nullptr;
            }
            only = &child;
        }
    }
    return only;
}

void PointIndexBuilder::splitEdge(Word edge, Children& children) const {
    const BoundaryVertex* const ends = &index_.ringVertices_[edge >> cells::edgeBits];
    const double lowest = std::min(ends[0].y, ends[1].y);
    const double highest = std::max(ends[0].y, ends[1].y);
    for (std::size_t row = 0; row < 2; ++row) {
        Child* const rowChildren = &children[2 * row];
        const double yLow = rowChildren[0].box.yMin - margin_;
        const double yHigh = rowChildren[0].box.yMax + margin_;
        const double yCentre = rowChildren[0].yCentre;
        const Word counted = endsBelow(edge, ends, yCentre);
        if (highest < yLow || lowest > yHigh) {
            rowChildren[0].odd ^= counted;
            rowChildren[1].odd ^= counted;
            continue;
        }
        const Interval reach = clip(ends, yLow, yHigh);
        for (std::size_t column = 0; column < 2; ++column) {
            Child& child = rowChildren[column];
            if (reach.low - margin_ > child.box.xMax || reach.high + margin_ < child.box.xMin) {
                const ElevationPoint centre{child.xCentre, yCentre};
                const bool toggles = edgeEffect(ends[0], ends[1], centre) == EdgeEffect::Toggle;
                child.odd ^= counted ^ (toggles ? 1U : 0U);
                continue;
            }
            const auto counts = [&](const BoundaryVertex& end) {
                return end.x > child.xCentre && end.y >= yLow && end.y <= yHigh;
            };
            Word kept = edge & ~cells::endsMask;
            kept |= counts(ends[0]) ? cells::fromCounts : 0U;
            kept |= counts(ends[1]) ? cells::toCounts : 0U;
            child.groups.push_back(kept);
            child.odd ^= counted ^ endsBelow(kept, ends, yCentre);
        }
    }
}

void PointIndexBuilder::flatten(Cell root) {
    // About as many entries as the tree has cells; a table that outgrows the cache gains nothing.
    constexpr unsigned mostBits = 10;
    const auto entries = [](unsigned bits) { return std::size_t{1} << (2 * bits); };
    while (index_.tableBits_ < std::min(mostBits, deepest_) &&
           entries(index_.tableBits_ + 1) <= index_.quads_.size()) {
        ++index_.tableBits_;
    }
    index_.tableShift_ = deepest_ - index_.tableBits_;
    index_.table_.resize(entries(index_.tableBits_));
    fillTable(root, {0, 0, 0});

    // A quarter of a byte for each entry, so that there can be many more of them.
    constexpr unsigned mostOverviewBits = 11;
    while (index_.overviewBits_ < std::min(mostOverviewBits, deepest_) &&
           entries(index_.overviewBits_ + 1) <= 16 * index_.quads_.size()) {
        ++index_.overviewBits_;
    }
    index_.overviewShift_ = deepest_ - index_.overviewBits_;
    index_.overview_.resize(entries(index_.overviewBits_) / 4 + 1);
    fillOverview(root, {0, 0, 0});
}

/// Enters the state of a cell into the overview, which is all outside at first.
// NOLINTNEXTLINE(misc-no-recursion): the overview has few levels
void PointIndexBuilder::fillOverview(Cell cell, const Place& place) {
    const unsigned bits = index_.overviewBits_;
    if (place.level < bits && (cell & cells::kindMask) == cells::split) {
        for (std::uint32_t i = 0; i < 4; ++i) {
            fillOverview(index_.quads_[(cell >> cells::kindBits) + i],
                         {place.level + 1, 2 * place.column + i % 2, 2 * place.row + i / 2});
        }
        return;
    }
    if (cell == cells::outside) {
        return;
    }
    const unsigned state =
        cell == cells::inside ? static_cast<unsigned>(cells::inside) : cells::mixed;
    const unsigned scale = bits - place.level;
    const std::size_t size = std::size_t{1} << scale;
    const std::size_t column = std::size_t{place.column} << scale;
    const std::size_t row = std::size_t{place.row} << scale;
    for (std::size_t y = row; y < row + size; ++y) {
        const std::size_t first = (y << bits) + column;
        if (size >= 4) { // whole bytes
            std::memset(&index_.overview_[first / 4], static_cast<int>(state * 0x55), size / 4);
            continue;
        }
        for (std::size_t at = first; at < first + size; ++at) {
            index_.overview_[at / 4] =
                static_cast<std::uint8_t>(index_.overview_[at / 4] | state << (2 * (at % 4)));
        }
    }
}

// NOLINTNEXTLINE(misc-no-recursion): the table has few levels
void PointIndexBuilder::fillTable(Cell cell, const Place& place) {
    const unsigned bits = index_.tableBits_;
    if (place.level < bits && (cell & cells::kindMask) == cells::split) {
        for (std::uint32_t i = 0; i < 4; ++i) {
            fillTable(index_.quads_[(cell >> cells::kindBits) + i],
                      {place.level + 1, 2 * place.column + i % 2, 2 * place.row + i / 2});
        }
        return;
    }
    const unsigned scale = bits - place.level;
    const std::size_t size = std::size_t{1} << scale;
    const std::size_t column = std::size_t{place.column} << scale;
    const std::size_t row = std::size_t{place.row} << scale;
    for (std::size_t y = row; y < row + size; ++y) {
        const auto first =
            index_.table_.begin() + static_cast<std::ptrdiff_t>((y << bits) + column);
        std::fill(first, first + static_cast<std::ptrdiff_t>(size), cell);
    }
}

} // namespace veldtrim
