/// How the cells of the point index are laid out in words of 32 bits.
#pragma once

#include <cstdint>

namespace veldtrim::cells {

using Word = std::uint32_t;

// A cell. The two lowest bits say what it is; the others where a leaf or a quad of children begins.
inline constexpr Word outside = 0;
inline constexpr Word inside = 1;
inline constexpr Word leaf = 2;
inline constexpr Word split = 3;
inline constexpr Word kindMask = 3;
inline constexpr unsigned kindBits = 2;

// A leaf: the number of its groups, then the groups. A group stands for one polygon and begins with
// a head: the number of edges, and two flags. An ordinary group goes on with its edges; a group
// whose polygon is asked as a whole goes on with the polygon's number and has no edges.
inline constexpr Word groupOdd = 1;
inline constexpr Word groupWhole = 2;
inline constexpr unsigned groupBits = 2;

// An edge of a leaf: its number, and for each end whether it counts when it lies below the point.
// The edges that are not in the cell add up to one parity for the cell only together with these
// ends, where their chains begin.
inline constexpr Word fromCounts = 1;
inline constexpr Word toCounts = 2;
inline constexpr unsigned edgeBits = 2;

} // namespace veldtrim::cells
