/// Upper levels of the tree as grids, in which a look-up finds a cell without a descent.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <vector>

namespace veldtrim {

/// The column and row of a point among the cells of the finest level.
struct PointPlace {
    std::uint32_t column;
    std::uint32_t row;
};

/// A level of the tree as a grid, row by row.
struct GridLevel {
    unsigned bits = 0;  ///< 2^bits columns and as many rows
    unsigned shift = 0; ///< levels between this one and the finest

    [[nodiscard]] std::size_t entryCount() const { return std::size_t{1} << (2 * bits); }

    [[nodiscard]] std::size_t entryOf(PointPlace place) const {
        return (std::size_t{place.row >> shift} << bits) + (place.column >> shift);
    }
};

/// The state of one cell of the overview.
enum class AreaState : std::uint8_t {
    Outside, ///< the whole cell is outside
    Inside,  ///< the whole cell is inside
    Mixed    ///< neither
};

/// The states of the cells of one level, in two bits each. They are small enough to stay in the
/// cache, and suffice for most points.
class Overview {
public:
    Overview() = default;

    /// All outside.
    explicit Overview(std::size_t entryCount) : bytes_(entryCount / statesPerByte + 1) {}

    [[nodiscard]] AreaState state(std::size_t entry) const {
        return static_cast<AreaState>(bytes_[entry / statesPerByte] >> shiftOf(entry) & stateMask);
    }

    /// Sets the state of `count` successive entries, which must be outside so far. `count` must be
    /// a power of two, and `first` a multiple of it.
    void fill(std::size_t first, std::size_t count, AreaState state) {
        const auto bits = static_cast<unsigned>(state);
        if (count >= statesPerByte) {
            std::memset(&bytes_[first / statesPerByte], static_cast<int>(bits * everyState),
                        count / statesPerByte);
            return;
        }
        for (std::size_t entry = first; entry < first + count; ++entry) {
            std::uint8_t& byte = bytes_[entry / statesPerByte];
            byte = static_cast<std::uint8_t>(byte | bits << shiftOf(entry));
        }
    }

    /// Returns the address of the byte with the state of an entry.
    [[nodiscard]] const void* addressOf(std::size_t entry) const {
        return &bytes_[entry / statesPerByte];
    }

    [[nodiscard]] std::size_t byteSize() const { return bytes_.size(); }

private:
    static constexpr std::size_t statesPerByte = 4;
    static constexpr unsigned stateMask = 3;
    static constexpr unsigned everyState = 0x55;

    static constexpr std::size_t shiftOf(std::size_t entry) { return 2 * (entry % statesPerByte); }

    std::vector<std::uint8_t> bytes_;
};

} // namespace veldtrim
