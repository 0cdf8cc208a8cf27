#include "boundary/index/flatten.h"

#include "boundary/index/tree_frame.h"

#include <algorithm>
#include <cstddef>

namespace veldtrim {

namespace {

/// A table that is larger than the cache gains nothing.
constexpr unsigned mostTableBits = 10;

/// The overview's entries take a quarter of a byte each, so there can be many more of them.
constexpr unsigned mostOverviewBits = 11;
constexpr std::size_t overviewEntriesPerQuarter = 16;

/// Returns the finest level with at most `mostBits` bits and `mostEntries` entries.
GridLevel chooseLevel(unsigned mostBits, std::size_t mostEntries, unsigned deepest) {
    GridLevel level;
    while (level.bits < std::min(mostBits, deepest) &&
           GridLevel{level.bits + 1, 0}.entryCount() <= mostEntries) {
        ++level.bits;
    }
    level.shift = deepest - level.bits;
    return level;
}

/// Finds the cell of each entry of a grid. Calls `fill(first, count, cell)` for each range of
/// successive entries with the same cell.
template <typename Fill>
class GridFiller {
public:
    GridFiller(const GridLevel& level, const std::vector<Cell>& quarters, Fill fill)
        : bits_(level.bits), quarters_(quarters), fill_(fill) {}

    // NOLINTNEXTLINE(misc-no-recursion): a grid has few levels
    void fillBelow(Cell cell, const CellPlace& place) {
        if (place.level < bits_ && cell.kind() == Cell::Kind::Split) {
            for (std::uint32_t i = 0; i < 4; ++i) {
                fillBelow(quarters_[cell.firstQuarter() + i], place.quarter(i));
            }
            return;
        }
        const unsigned scale = bits_ - place.level;
        const std::size_t size = std::size_t{1} << scale;
        const std::size_t column = std::size_t{place.column} << scale;
        const std::size_t row = std::size_t{place.row} << scale;
        for (std::size_t y = row; y < row + size; ++y) {
            fill_((y << bits_) + column, size, cell);
        }
    }

private:
    unsigned bits_;
    const std::vector<Cell>& quarters_;
    Fill fill_;
};

AreaState stateOf(Cell cell) {
    switch (cell.kind()) {
    case Cell::Kind::Outside:
        return AreaState::Outside;
    case Cell::Kind::Inside:
        return AreaState::Inside;
    default:
        return AreaState::Mixed;
    }
}

} // namespace

void flattenTree(Cell root, unsigned deepest, PointIndexData& data) {
    // At most as many entries as the tree has cells.
    data.tableLevel = chooseLevel(mostTableBits, data.quarters.size(), deepest);
    data.table.resize(data.tableLevel.entryCount());
    GridFiller(data.tableLevel, data.quarters,
               [&](std::size_t first, std::size_t count, Cell cell) {
                   std::fill_n(&data.table[first], count, cell);
               })
        .fillBelow(root, {});

    data.overviewLevel =
        chooseLevel(mostOverviewBits, overviewEntriesPerQuarter * data.quarters.size(), deepest);
    data.overview = Overview(data.overviewLevel.entryCount());
    GridFiller(data.overviewLevel, data.quarters,
               [&](std::size_t first, std::size_t count, Cell cell) {
                   if (const AreaState state = stateOf(cell); state != AreaState::Outside) {
                       data.overview.fill(first, count, state);
                   }
               })
        .fillBelow(root, {});
}

} // namespace veldtrim
