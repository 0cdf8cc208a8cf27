/// Edges as the cells of the point index store them. README.md describes their format.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

namespace veldtrim {

/// The unit of leaves and group lists.
using Word = std::uint32_t;

/// Which ends of an edge count in a cell, in two bits.
class CountingEnds {
public:
    static constexpr unsigned bitCount = 2;

    constexpr CountingEnds() = default;
    constexpr CountingEnds(bool from, bool to)
        : bits_((from ? fromBit : Word{0}) | (to ? toBit : Word{0})) {}

    /// Reads the lowest two bits of `bits` and ignores the others.
    static constexpr CountingEnds fromBits(Word bits) {
        CountingEnds ends;
        ends.bits_ = bits & (fromBit | toBit);
        return ends;
    }
    [[nodiscard]] constexpr Word bits() const { return bits_; }

    /// Whether the number of counting ends that lie below a point is odd.
    [[nodiscard]] constexpr bool oddBelow(bool fromBelow, bool toBelow) const {
        return (((bits_ & fromBit) != 0) && fromBelow) != (((bits_ & toBit) != 0) && toBelow);
    }

private:
    static constexpr Word fromBit = 1;
    static constexpr Word toBit = 2;

    Word bits_ = 0;
};

/// An edge of a ring: its number, and which of its ends count in the cell that keeps it. Edge n
/// runs from ring vertex n to ring vertex n + 1.
class IndexEdge {
public:
    /// `number` must be less than 2^30.
    constexpr explicit IndexEdge(Word number, CountingEnds ends = {})
        : bits_(number << CountingEnds::bitCount | ends.bits()) {}

    static constexpr IndexEdge fromWord(Word word) {
        return IndexEdge(word >> CountingEnds::bitCount, CountingEnds::fromBits(word));
    }
    [[nodiscard]] constexpr Word word() const { return bits_; }

    [[nodiscard]] constexpr Word number() const { return bits_ >> CountingEnds::bitCount; }
    [[nodiscard]] constexpr CountingEnds ends() const { return CountingEnds::fromBits(bits_); }

private:
    Word bits_;
};

/// A sequence of edges, stored as successive words.
class EdgeList {
public:
    class Iterator {
    public:
        constexpr explicit Iterator(const Word* word) : word_(word) {}
        constexpr IndexEdge operator*() const { return IndexEdge::fromWord(*word_); }
        constexpr Iterator& operator++() {
            ++word_;
            return *this;
        }
        constexpr bool operator==(const Iterator& other) const = default;

    private:
        const Word* word_;
    };

    constexpr EdgeList() = default;
    constexpr explicit EdgeList(std::span<const Word> words) : words_(words) {}

    [[nodiscard]] constexpr std::size_t size() const { return words_.size(); }
    [[nodiscard]] constexpr IndexEdge operator[](std::size_t i) const {
        return IndexEdge::fromWord(words_[i]);
    }
    [[nodiscard]] constexpr Iterator begin() const { return Iterator(words_.data()); }
    [[nodiscard]] constexpr Iterator end() const { return Iterator(words_.data() + words_.size()); }
    [[nodiscard]] constexpr std::span<const Word> words() const { return words_; }

private:
    std::span<const Word> words_;
};

} // namespace veldtrim
