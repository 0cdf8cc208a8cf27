/// What all fuzz targets are made of: decisions and texts drawn from the input, and claims.
#pragma once

#include "judges/stream_numbers.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <string_view>
#include <type_traits>

namespace veldtrim::fuzz {

/// Ends the process with `claim` on standard error unless it holds, so that a fuzzer keeps the
/// input and a replay fails.
inline void require(bool holds, const char* claim) {
    if (!holds) {
        std::fprintf(stderr, "does not hold: %s\n", claim);
        std::abort();
    }
}

/// Requires that `read` returns and stores what extraction from `text` does, if there is a text to
/// extract from. `value` is what is there before.
template <typename Value, typename Read>
void requireAsStream(Value value, const std::string& text, Read read, bool isThere = true) {
    Value expected = value;
    require(read(value) == (isThere && extractFrom(text, expected)), "the verdict on a value");
    if constexpr (std::is_floating_point_v<Value>) {
        require(sameBits(value, expected), "a value");
    } else {
        require(value == expected, "a value");
    }
}

/// The input as text.
inline std::string_view textOf(const std::uint8_t* data, std::size_t size) {
    return {reinterpret_cast<const char*>(data), size}; // NOLINT: bytes are characters here
}

/// An input that is used up reads as zeros: every decision has its simplest outcome, and loops
/// that ask `more` end.
class Draw {
public:
    explicit Draw(std::string_view input) : rest_(input) {}

    [[nodiscard]] bool more() const { return !rest_.empty(); }

    /// A number from 0 to `limit` - 1, from one byte; `limit` is at most 256.
    std::size_t below(std::size_t limit) {
        if (rest_.empty()) {
            return 0;
        }
        const auto byte = static_cast<std::uint8_t>(rest_.front());
        rest_.remove_prefix(1);
        return byte % limit;
    }

    template <std::size_t size>
    std::string_view oneOf(const std::array<std::string_view, size>& choices) {
        return choices[below(size)];
    }

    /// The bytes before the next `end`, which is used up too, or all that is left.
    std::string_view until(char end) {
        const std::size_t length = std::min(rest_.find(end), rest_.size());
        const std::string_view bytes = rest_.substr(0, length);
        rest_.remove_prefix(std::min(length + 1, rest_.size()));
        return bytes;
    }

    std::string_view rest() {
        const std::string_view bytes = rest_;
        rest_ = {};
        return bytes;
    }

private:
    std::string_view rest_;
};

} // namespace veldtrim::fuzz
