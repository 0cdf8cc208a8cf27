/// How the cells of the point index are laid out in memory.
#pragma once

#include <cstdint>

namespace veldtrim::cells {

/// A cell of the tree. The lowest bits say what kind it is.
using Cell = std::uint64_t;

inline constexpr Cell outside = 0;
inline constexpr Cell inside = 1;
inline constexpr Cell leaf = 2;  ///< the other bits: where it begins among the leaves
inline constexpr Cell split = 3; ///< the other bits: where its four children begin
inline constexpr Cell run = 4;   ///< a leaf so small that it fits into its cell
inline constexpr Cell kindMask = 7;
inline constexpr unsigned kindBits = 3;

// The overview: two bits for each of its cells, outside or inside as above, or neither as a whole.
inline constexpr unsigned mixed = 2;
inline constexpr unsigned stateMask = 3;

// A run: up to three successive edges of one ring. One bit for the parity of all its other edges,
// the number of edges, the two bits of each edge that say which of its ends count (below), and the
// first edge's number.
inline constexpr unsigned runOddShift = 3;
inline constexpr unsigned runSizeShift = 4;
inline constexpr Cell runSizeMask = 3;
inline constexpr unsigned runEndsShift = 6;
inline constexpr unsigned runEdgeShift = 32;
inline constexpr std::uint32_t longestRun = 3;

/// Leaves, and cells while the tree is built, are lists of words.
using Word = std::uint32_t;

// A leaf: the number of its groups, then the groups. A group stands for one polygon and begins with
// a head: the number of edges, and flags. Its edges follow. A group whose polygon is asked as a
// whole has no edges but the polygon's number. A group with a queue has, before its edges, a number
// of further ones, not counted in the head, and these: edges that pass through all heights of the
// cell, from left to right, none crossing another there.
inline constexpr Word groupOdd = 1;
inline constexpr Word groupWhole = 2;
inline constexpr Word groupQueue = 4;
inline constexpr unsigned groupBits = 3;

// An edge of a leaf: its number, and for each end whether it counts when it lies below the point.
// The edges that are not in the cell add up to one parity for the cell only together with these
// ends, where their chains begin.
inline constexpr Word fromCounts = 1;
inline constexpr Word toCounts = 2;
inline constexpr Word endsMask = 3;
inline constexpr unsigned edgeBits = 2;

} // namespace veldtrim::cells
