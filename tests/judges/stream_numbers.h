/// Numbers as formatted stream extraction in the classic locale reads them: the definition that all
/// faster reading must keep to.
#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <ios>
#include <locale>
#include <sstream>
#include <string>

namespace veldtrim::fuzz {

/// What an extraction leaves behind besides the value.
struct Extraction {
    bool succeeds;
    bool sawEnd;      ///< the stream's end-of-file state
    std::size_t stop; ///< characters that it took
};

template <typename Value>
Extraction extract(const std::string& text, Value& value) {
    std::istringstream stream(text);
    stream.imbue(std::locale::classic());
    stream >> value;
    const auto stop = stream.rdbuf()->pubseekoff(0, std::ios::cur, std::ios::in);
    return {!stream.fail(), stream.eof(), static_cast<std::size_t>(std::streamoff(stop))};
}

template <typename Value>
bool extractFrom(const std::string& text, Value& value) {
    return extract(text, value).succeeds;
}

inline bool sameBits(double a, double b) {
    return std::bit_cast<std::uint64_t>(a) == std::bit_cast<std::uint64_t>(b);
}

} // namespace veldtrim::fuzz
