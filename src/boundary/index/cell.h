/// The cells of the point index, of 64 bits each. README.md describes their format.
#pragma once

#include "boundary/index/edge.h"

#include <cstddef>
#include <cstdint>

namespace veldtrim {

/// A leaf so small that it fits into its cell: one to three successive edges of a ring, and the
/// parity of the ring's other edges.
class Run {
public:
    static constexpr std::size_t longest = 3;

    constexpr Run(Word firstEdge, std::size_t size, bool odd)
        : bits_(std::uint64_t{firstEdge} << edgeShift | std::uint64_t{size} << sizeShift |
                (odd ? oddBit : 0)) {}

    /// Sets which ends of the edge at `position` count. Must not be called twice for an edge.
    constexpr void setEnds(std::size_t position, CountingEnds ends) {
        bits_ |= std::uint64_t{ends.bits()} << endsShiftOf(position);
    }

    [[nodiscard]] constexpr Word firstEdge() const { return static_cast<Word>(bits_ >> edgeShift); }
    [[nodiscard]] constexpr std::size_t size() const { return bits_ >> sizeShift & sizeMask; }
    [[nodiscard]] constexpr bool odd() const { return (bits_ & oddBit) != 0; }
    [[nodiscard]] constexpr CountingEnds ends(std::size_t position) const {
        return CountingEnds::fromBits(static_cast<Word>(bits_ >> endsShiftOf(position)));
    }

    /// Converts the run to 61 bits and back.
    [[nodiscard]] constexpr std::uint64_t bits() const { return bits_; }
    static constexpr Run fromBits(std::uint64_t bits) {
        Run run(0, 0, false);
        run.bits_ = bits;
        return run;
    }

private:
    static constexpr std::uint64_t oddBit = 1;
    static constexpr unsigned sizeShift = 1;
    static constexpr std::uint64_t sizeMask = 3;
    static constexpr unsigned endsShift = 3;
    static constexpr unsigned edgeShift = 29;

    static constexpr std::size_t endsShiftOf(std::size_t position) {
        return endsShift + CountingEnds::bitCount * position;
    }

    std::uint64_t bits_;
};

/// A cell of the tree: its kind in the lowest three bits, and the content of that kind.
class Cell {
public:
    enum class Kind : std::uint8_t {
        Outside, ///< the whole cell is outside
        Inside,  ///< the whole cell is inside
        Leaf,    ///< has a list of groups among the leaves
        Split,   ///< has four quarters
        Run
    };

    /// An outside cell.
    constexpr Cell() = default;
    static constexpr Cell inside() { return {Kind::Inside, 0}; }
    static constexpr Cell leafAt(std::size_t position) { return {Kind::Leaf, position}; }
    static constexpr Cell splitAt(std::size_t firstQuarter) { return {Kind::Split, firstQuarter}; }
    static constexpr Cell ofRun(const Run& run) { return {Kind::Run, run.bits()}; }

    [[nodiscard]] constexpr Kind kind() const { return static_cast<Kind>(bits_ & kindMask); }

    /// For a leaf: the position of its first word among those of all leaves.
    [[nodiscard]] constexpr std::size_t leafPosition() const { return bits_ >> kindBits; }

    /// For a split cell: the position of its first quarter. The quarters follow each other in the
    /// order south west, south east, north west, north east.
    [[nodiscard]] constexpr std::size_t firstQuarter() const { return bits_ >> kindBits; }

    /// For a run.
    [[nodiscard]] constexpr Run run() const { return Run::fromBits(bits_ >> kindBits); }

private:
    static constexpr unsigned kindBits = 3;
    static constexpr std::uint64_t kindMask = 7;

    constexpr Cell(Kind kind, std::uint64_t content)
        : bits_(content << kindBits | static_cast<std::uint64_t>(kind)) {}

    std::uint64_t bits_ = 0;
};

static_assert(sizeof(Cell) == sizeof(std::uint64_t));

} // namespace veldtrim
