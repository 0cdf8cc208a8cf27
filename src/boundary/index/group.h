/// Groups: what a cell keeps of one polygon. README.md describes their format.
///
/// Only this file and edge.h know the format of leaves: everything else reads groups with
/// GroupReader and writes them with LeafWriter or GroupList.
#pragma once

#include "boundary/index/edge.h"

#include <cstddef>
#include <span>
#include <vector>

namespace veldtrim {

/// The first word of a group.
class GroupHead {
public:
    static constexpr GroupHead ofRing(std::size_t edgeCount, bool odd) {
        return {edgeCount, odd ? oddBit : 0};
    }
    static constexpr GroupHead ofLine(std::size_t edgeCount) { return {edgeCount, lineBit}; }
    [[nodiscard]] constexpr GroupHead withQueue() const { return fromWord(bits_ | queueBit); }

    static constexpr GroupHead fromWord(Word word) {
        GroupHead head(0, 0);
        head.bits_ = word;
        return head;
    }
    [[nodiscard]] constexpr Word word() const { return bits_; }

    /// The number of edges outside the queue.
    [[nodiscard]] constexpr std::size_t edgeCount() const { return bits_ >> flagBits; }

    /// The parity of the ring's other edges.
    [[nodiscard]] constexpr bool odd() const { return (bits_ & oddBit) != 0; }

    /// Whether the polygon is a line, which is tested as a whole.
    [[nodiscard]] constexpr bool isLine() const { return (bits_ & lineBit) != 0; }

    [[nodiscard]] constexpr bool hasQueue() const { return (bits_ & queueBit) != 0; }

private:
    static constexpr Word oddBit = 1;
    static constexpr Word lineBit = 2;
    static constexpr Word queueBit = 4;
    static constexpr unsigned flagBits = 3;

    constexpr GroupHead(std::size_t edgeCount, Word flags)
        : bits_(static_cast<Word>(edgeCount) << flagBits | flags) {}

    Word bits_;
};

/// A group that was read. Its edges refer to the words from which it was read.
struct Group {
    GroupHead head;
    Word number; ///< of a line: its position in `lines`; in a GroupList: see README.md
    EdgeList queue;
    EdgeList edges;
};

/// Where groups are stored. In a leaf, only those of lines have a number; in a GroupList, all do.
enum class GroupsOf { Leaf, List };

/// Reads successive groups.
template <GroupsOf place>
class GroupReader {
public:
    /// Reads `count` groups, beginning at `words`.
    constexpr GroupReader(const Word* words, std::size_t count) : next_(words), left_(count) {}

    [[nodiscard]] constexpr bool atEnd() const { return left_ == 0; }

    /// Returns the next group. Must not be called at the end.
    constexpr Group next() {
        --left_;
        Group group{GroupHead::fromWord(*next_++), 0, {}, {}};
        if (place == GroupsOf::List || group.head.isLine()) {
            group.number = *next_++;
        }
        if (group.head.hasQueue()) {
            const std::size_t size = *next_++;
            group.queue = take(size);
        }
        group.edges = take(group.head.edgeCount());
        return group;
    }

private:
    constexpr EdgeList take(std::size_t count) {
        const Word* const first = next_;
        next_ += count;
        return EdgeList({first, count});
    }

    const Word* next_;
    std::size_t left_;
};

/// Reads the groups of the leaf that begins at `leaf`.
inline GroupReader<GroupsOf::Leaf> readLeaf(const Word* leaf) {
    return {leaf + 1, *leaf};
}

/// Appends one leaf to the words of the others, group by group.
class LeafWriter {
public:
    explicit LeafWriter(std::vector<Word>& leaves) : leaves_(leaves), position_(leaves.size()) {
        leaves_.push_back(0);
    }

    /// The position of the leaf's first word.
    [[nodiscard]] std::size_t position() const { return position_; }

    void addLine(Word number) {
        begin(GroupHead::ofLine(0));
        leaves_.push_back(number);
    }

    void addRing(EdgeList edges, bool odd) {
        begin(GroupHead::ofRing(edges.size(), odd));
        leaves_.insert(leaves_.end(), edges.words().begin(), edges.words().end());
    }

    /// Adds a ring whose first `queued` edges form a queue.
    void addQueue(std::span<const IndexEdge> edges, std::size_t queued, bool odd) {
        begin(GroupHead::ofRing(edges.size() - queued, odd).withQueue());
        leaves_.push_back(static_cast<Word>(queued));
        for (const IndexEdge edge : edges) {
            leaves_.push_back(edge.word());
        }
    }

private:
    void begin(GroupHead head) {
        ++leaves_[position_];
        leaves_.push_back(head.word());
    }

    std::vector<Word>& leaves_;
    std::size_t position_;
};

/// The groups of a cell while the tree is built. They have no queues.
class GroupList {
public:
    [[nodiscard]] bool empty() const { return count_ == 0; }
    [[nodiscard]] std::size_t count() const { return count_; }
    [[nodiscard]] std::size_t wordCount() const { return words_.size(); }
    [[nodiscard]] GroupReader<GroupsOf::List> read() const { return {words_.data(), count_}; }

    void reserve(std::size_t words) { words_.reserve(words); }
    void clear() {
        words_.clear();
        count_ = 0;
    }

    void append(const Group& group) {
        open(group.number);
        words_.insert(words_.end(), group.edges.words().begin(), group.edges.words().end());
        close(group.head);
    }

    /// Begins a group, which `close` ends and `drop` discards.
    void open(Word number) {
        head_ = words_.size();
        words_.insert(words_.end(), {Word{0}, number});
    }

    /// Adds an edge to the open group.
    void add(IndexEdge edge) { words_.push_back(edge.word()); }

    /// The number of edges of the open group.
    [[nodiscard]] std::size_t openEdges() const { return words_.size() - head_ - 2; }

    void close(GroupHead head) {
        words_[head_] = head.word();
        ++count_;
    }

    /// Discards the open group.
    void drop() { words_.resize(head_); }

private:
    std::vector<Word> words_;
    std::size_t count_ = 0;
    std::size_t head_ = 0; ///< position of the open group's head
};

} // namespace veldtrim
