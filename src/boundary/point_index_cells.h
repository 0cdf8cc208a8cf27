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
inline constexpr unsigned edgeBits = 2;

} // namespace veldtrim::cells
