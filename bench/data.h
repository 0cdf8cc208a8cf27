/// The records that the benchmarks inside a process work on.
#pragma once

#include <cstddef>
#include <fstream>
#include <stdexcept>
#include <string>

namespace veldtrim::bench {

/// Bytes of a record, its line feed included: 503214.07;5401876.93;46.50
inline constexpr std::size_t recordSize = 27;

/// The first `count` records, of at most 2^20, of the file that bench/run has written to the
/// working directory.
inline std::string readRecords(std::size_t count) {
    std::ifstream file("records-1048576/scan.txt", std::ios::binary);
    std::string header;
    std::getline(file, header);
    std::string records(count * recordSize, '\0');
    if (!file.read(records.data(), static_cast<std::streamsize>(records.size()))) {
        throw std::runtime_error("there are no records: start this program with bench/run");
    }
    return records;
}

} // namespace veldtrim::bench
