/// Random records of an elevation point file.
#pragma once

#include "geometry/elevation_point.h"
#include "random.h"

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace veldtrim::bench {

inline constexpr std::string_view recordHeader = "x;y;z\n";

/// Bytes of a record, its line feed included: 503214.07;5401876.93;46.50
inline constexpr std::size_t recordSize = 27;

/// The records of a file, one after the other: evenly spread over the area, two decimals.
class RecordSource {
public:
    /// Writes the next record, `recordSize` bytes, to `to` and returns its point.
    ElevationPoint write(char* to);

private:
    Random random_{4};
};

} // namespace veldtrim::bench
