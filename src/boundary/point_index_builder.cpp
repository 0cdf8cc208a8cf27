#include "boundary/point_index_builder.h"

#include "boundary/edge_crossing.h"
#include "boundary/edge_queue.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace veldtrim {

namespace {

/// Beyond this, coordinates have no fraction left, and products of them could overflow.
constexpr double largestCoordinate = 1e15;

/// How far beyond its ends a flat polygon holds points: the tolerance of boundsContain, and a
/// little for its rounding.
constexpr double flatReach = 1.0001e-6;

/// A cell with no more words than this is not worth splitting.
constexpr std::size_t leafWords = 6;

/// From this many edges of one polygon on, a leaf puts those in a queue that can stand in one.
constexpr std::ptrdiff_t queueEdges = 16;

/// Words for each edge, in cells and leaves together: bounds the memory where many long edges lie
/// close to each other.
constexpr std::size_t wordsPerEdge = 14;
constexpr std::size_t mostWords = std::size_t{1} << 29U;

/// An edge that rises less has its whole width at each of its heights: the quotient in the crossing
/// abscissa could underflow.
constexpr double smallestRise = 1e-140;

bool isIndexable(const BoundaryVertex& vertex) {
    return std::abs(vertex.x) <= largestCoordinate && std::abs(vertex.y) <= largestCoordinate;
}

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
    addPolygons();
    index_.quads_.assign(1, cells::outside);
    if (!current_.words.empty()) {
        setScale();
        // Room that is not used costs no memory, and nothing is copied while the lists grow.
        wordBudget_ = std::min(mostWords, wordsPerEdge * index_.ringVertices_.size() + 64);
        index_.leaves_.reserve(wordBudget_);
        next_.words.reserve(wordBudget_);
        current_.cells.push_back({0, 0, 0, static_cast<Word>(current_.words.size()), 0});
        while (!current_.cells.empty()) {
            buildLevel();
        }
    }
    flatten();
}

void PointIndexBuilder::addPolygons() {
    constexpr double infinity = std::numeric_limits<double>::infinity();
    index_.region_ = {infinity, infinity, -infinity, -infinity};
    index_.ringVertices_.reserve(vertices_.size() + 2 * polygons_.size());
    for (std::size_t i = 0; i < polygons_.size(); ++i) {
        const BoundaryPolygon& polygon = polygons_[i];
        const Ring ring(polygon, vertices_);
        if (polygon.vertexIndices.empty() || ring.size() < 2) {
            continue; // holds no point
        }
        const auto number = static_cast<Word>(i);
        if (!boundsAreThoseOf(ring, polygon.bounds)) {
            index_.unindexed_.push_back(number);
        } else if (ring.size() == 2) {
            addWhole(ring.vertex(0), ring.vertex(1), number);
        } else if (polygon.bounds.yMin == polygon.bounds.yMax) {
            addWhole({polygon.bounds.xMin - flatReach, polygon.bounds.yMin},
                     {polygon.bounds.xMax + flatReach, polygon.bounds.yMin}, number);
        } else {
            addRing(ring, number);
        }
    }
}

/// Whether cells can stand for the pretest: its bounds are exactly those of the vertices, and all
/// of these are numbers of a usual size.
bool PointIndexBuilder::boundsAreThoseOf(const Ring& ring, const BoundingBox& bounds) const {
    BoundingBox actual{ring.vertex(0).x, ring.vertex(0).y, ring.vertex(0).x, ring.vertex(0).y};
    for (std::size_t i = 0; i < ring.size(); ++i) {
        const BoundaryVertex& vertex = ring.vertex(i);
        if (!isIndexable(vertex)) {
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

void PointIndexBuilder::addRing(const Ring& ring, Word number) {
    current_.words.push_back(static_cast<Word>(ring.size()) << cells::groupBits);
    current_.words.push_back(number);
    for (std::size_t i = 0; i < ring.size(); ++i) {
        current_.words.push_back(static_cast<Word>(index_.ringVertices_.size()) << cells::edgeBits);
        addVertex(ring.vertex(i));
    }
    addVertex(ring.vertex(0));
}

/// Adds a polygon that is asked as a whole wherever the line between two points passes.
void PointIndexBuilder::addWhole(const BoundaryVertex& from, const BoundaryVertex& to,
                                 Word number) {
    current_.words.push_back(1U << cells::groupBits | cells::groupWhole);
    current_.words.push_back(number);
    current_.words.push_back(static_cast<Word>(index_.ringVertices_.size()) << cells::edgeBits);
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
    // All errors are a few units in the last place of the largest coordinate: of a crossing
    // abscissa (at most 16), of a clipped edge (8), of a point's cell (8), of a segment's distance
    // (8). The margin is 128 of them. Its lower bound covers what underflows near zero.
    margin_ = std::max(std::ldexp(largest, -46), 1e-150);
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

void PointIndexBuilder::buildLevel() {
    for (const OpenCell& cell : current_.cells) {
        if (!isLeaf(cell)) {
            split(cell);
        } else if (!makeRun(cell)) {
            makeLeaf(cell);
        }
    }
    std::swap(current_, next_);
    next_.cells.clear();
    next_.words.clear();
    next_.words.reserve(wordBudget_);
    ++level_;
}

bool PointIndexBuilder::isLeaf(const OpenCell& cell) const {
    const std::size_t words = cell.endWord - cell.firstWord;
    const std::size_t stillOpen = current_.words.size() - cell.firstWord;
    // Splitting about doubles the words of a cell that edges pass through.
    return words <= leafWords || level_ == deepest_ ||
           index_.leaves_.size() + next_.words.size() + stillOpen + words > wordBudget_;
}

/// Puts a cell with a few successive edges of one ring into the tree as they are; false if it has
/// others.
bool PointIndexBuilder::makeRun(const OpenCell& cell) {
    const Word* const group = current_.words.data() + cell.firstWord;
    const Word head = group[0];
    const Word* const edges = group + 2;
    const Word size = head >> cells::groupBits;
    if (size > cells::longestRun || cell.endWord - cell.firstWord != size + 2 ||
        (head & cells::groupWhole) != 0) {
        return false;
    }
    Cell run = cells::run | Cell{head & cells::groupOdd} << cells::runOddShift |
               Cell{size} << cells::runSizeShift |
               Cell{edges[0] >> cells::edgeBits} << cells::runEdgeShift;
    for (Word i = 0; i < size; ++i) {
        if (edges[i] >> cells::edgeBits != (edges[0] >> cells::edgeBits) + i) {
            return false;
        }
        run |= Cell{edges[i] & cells::endsMask} << (cells::runEndsShift + i * cells::edgeBits);
    }
    index_.quads_[cell.slot] = run;
    return true;
}

void PointIndexBuilder::makeLeaf(const OpenCell& cell) {
    Words& leaves = index_.leaves_;
    const std::size_t start = leaves.size();
    index_.quads_[cell.slot] = Cell{start} << cells::kindBits | cells::leaf;
    leaves.push_back(0);
    const Word* word = current_.words.data() + cell.firstWord;
    const Word* const end = current_.words.data() + cell.endWord;
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
            const double cellHeight = std::ldexp(height_, -static_cast<int>(level_));
            const double yLow = index_.region_.yMin + cell.row * cellHeight;
            const std::size_t queued =
                queueUp(edges, index_.ringVertices_, yLow - margin_, yLow + cellHeight + margin_);
            leaves.push_back(static_cast<Word>(edges.size() - queued) << cells::groupBits |
                             (head & cells::groupOdd) | cells::groupQueue);
            leaves.push_back(static_cast<Word>(queued));
            leaves.insert(leaves.end(), edges.begin(), edges.end());
        }
        ++leaves[start];
        word = edgesEnd;
    }
}

void PointIndexBuilder::split(const OpenCell& cell) {
    const double halfWidth = std::ldexp(width_, -static_cast<int>(level_) - 1);
    const double halfHeight = std::ldexp(height_, -static_cast<int>(level_) - 1);
    for (std::size_t i = 0; i < 3; ++i) {
        xLines_[i] = index_.region_.xMin + (2.0 * cell.column + static_cast<double>(i)) * halfWidth;
        yLines_[i] = index_.region_.yMin + (2.0 * cell.row + static_cast<double>(i)) * halfHeight;
    }
    for (std::size_t i = 0; i < children_.size(); ++i) {
        Child& child = children_[i];
        child.xCentre = 0.5 * (xLines_[i % 2] + xLines_[i % 2 + 1]);
        child.yCentre = 0.5 * (yLines_[i / 2] + yLines_[i / 2 + 1]);
        child.filled = false;
        child.words.clear();
    }

    const Word* word = current_.words.data() + cell.firstWord;
    const Word* const end = current_.words.data() + cell.endWord;
    while (word != end) {
        const Word head = *word++;
        const Word polygon = *word++;
        for (Child& child : children_) {
            child.head = child.words.size();
            child.words.push_back(0);
            child.words.push_back(polygon);
            child.odd = head & cells::groupOdd;
        }
        for (const Word* const edgesEnd = word + (head >> cells::groupBits); word != edgesEnd;) {
            splitEdge(*word++);
        }
        for (Child& child : children_) {
            endGroup(child, (head & cells::groupWhole) != 0);
        }
    }

    const std::size_t quad = index_.quads_.size();
    index_.quads_[cell.slot] = Cell{quad} << cells::kindBits | cells::split;
    for (std::size_t i = 0; i < children_.size(); ++i) {
        const Child& child = children_[i];
        index_.quads_.push_back(child.filled ? cells::inside : cells::outside);
        if (!child.filled && !child.words.empty()) {
            const auto first = static_cast<Word>(next_.words.size());
            next_.words.insert(next_.words.end(), child.words.begin(), child.words.end());
            next_.cells.push_back({2 * cell.column + static_cast<std::uint32_t>(i % 2),
                                   2 * cell.row + static_cast<std::uint32_t>(i / 2), first,
                                   static_cast<Word>(next_.words.size()),
                                   static_cast<Word>(quad + i)});
        }
    }
}

void PointIndexBuilder::splitEdge(Word edge) {
    const BoundaryVertex* const ends = &index_.ringVertices_[edge >> cells::edgeBits];
    const double lowest = std::min(ends[0].y, ends[1].y);
    const double highest = std::max(ends[0].y, ends[1].y);
    for (std::size_t row = 0; row < 2; ++row) {
        const double yLow = yLines_[row] - margin_;
        const double yHigh = yLines_[row + 1] + margin_;
        const double yCentre = children_[2 * row].yCentre;
        const Word counted = endsBelow(edge, ends, yCentre);
        if (highest < yLow || lowest > yHigh) {
            children_[2 * row].odd ^= counted;
            children_[2 * row + 1].odd ^= counted;
            continue;
        }
        const Interval reach = clip(ends, yLow, yHigh);
        for (std::size_t column = 0; column < 2; ++column) {
            Child& child = children_[2 * row + column];
            if (reach.low - margin_ > xLines_[column + 1] ||
                reach.high + margin_ < xLines_[column]) {
                const ElevationPoint centre{child.xCentre, yCentre};
                const bool toggles = edgeEffect(ends[0], ends[1], centre) == EdgeEffect::Toggle;
                child.odd ^= counted ^ (toggles ? 1U : 0U);
                continue;
            }
            Word kept = edge & ~cells::endsMask;
            const auto counts = [&](const BoundaryVertex& end) {
                return end.x > child.xCentre && end.y >= yLow && end.y <= yHigh;
            };
            kept |= counts(ends[0]) ? cells::fromCounts : 0U;
            kept |= counts(ends[1]) ? cells::toCounts : 0U;
            child.words.push_back(kept);
            child.odd ^= counted ^ endsBelow(kept, ends, yCentre);
        }
    }
}

/// Settles the current group of a child: a polygon without edges in it fills it or is not there.
void PointIndexBuilder::endGroup(Child& child, bool isWhole) {
    const std::size_t edges = child.words.size() - child.head - 2;
    if (edges == 0) {
        child.words.resize(child.head);
        child.filled = child.filled || (!isWhole && child.odd != 0);
    } else {
        child.words[child.head] = static_cast<Word>(edges) << cells::groupBits |
                                  (isWhole ? cells::groupWhole : child.odd);
    }
}

void PointIndexBuilder::flatten() {
    // About as many entries as the tree has cells; a table that outgrows the cache gains nothing.
    constexpr unsigned mostBits = 10;
    while (index_.tableBits_ < std::min(mostBits, deepest_) &&
           std::size_t{1} << (2 * index_.tableBits_) < index_.quads_.size()) {
        ++index_.tableBits_;
    }
    index_.tableShift_ = deepest_ - index_.tableBits_;
    index_.table_.resize(std::size_t{1} << (2 * index_.tableBits_));
    fillTable(index_.quads_.front(), 0, 0, 0);
}

/// Enters a cell of a level, at its column and row of that level, into the table.
void PointIndexBuilder::fillTable(Cell cell, unsigned level, std::size_t column, std::size_t row) {
    if (level < index_.tableBits_ && (cell & cells::kindMask) == cells::split) {
        for (std::size_t i = 0; i < 4; ++i) {
            fillTable(index_.quads_[(cell >> cells::kindBits) + i], level + 1, 2 * column + i % 2,
                      2 * row + i / 2);
        }
        return;
    }
    const unsigned scale = index_.tableBits_ - level;
    const std::size_t size = std::size_t{1} << scale;
    for (std::size_t y = 0; y < size; ++y) {
        const auto first = index_.table_.begin() +
                           static_cast<std::ptrdiff_t>((((row << scale) + y) << index_.tableBits_) +
                                                       (column << scale));
        std::fill(first, first + static_cast<std::ptrdiff_t>(size), cell);
    }
}

} // namespace veldtrim
