/// Eight characters at a time, with the arithmetic of ordinary integers.
#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>

namespace veldtrim::detail {

/// Whether the first of eight characters is the lowest byte, which all functions here presume.
inline constexpr bool firstIsLowest = std::endian::native == std::endian::little;

inline constexpr std::uint64_t everyByte = 0x0101010101010101;

/// Returns the characters at `at` with the bits of `character` flipped in each.
inline std::uint64_t loadEight(const char* at, char character) noexcept {
    std::uint64_t characters = 0;
    std::memcpy(&characters, at, sizeof characters);
    return characters ^ (everyByte * static_cast<unsigned char>(character));
}

/// Sets the highest bit of each byte of at least 10, and clears all others. Carries run upwards:
/// only the bytes above such a byte can be wrong.
inline std::uint64_t markNoDigits(std::uint64_t bytes) noexcept {
    return ((bytes + (0x80 - 10) * everyByte) | bytes) & (0x80 * everyByte);
}

/// The same for each byte of 0.
inline std::uint64_t markZeros(std::uint64_t bytes) noexcept {
    return (bytes - everyByte) & ~bytes & (0x80 * everyByte);
}

/// The number of bytes below the first marked one, of which there must be one.
inline std::size_t countBelow(std::uint64_t marks) noexcept {
    return static_cast<std::size_t>(std::countr_zero(marks)) / 8;
}

/// Reads eight digits, and a point before, among or right after the first seven: nine characters in
/// all. Returns the place behind the point, or null, with `digits` unchanged, if others stand
/// there.
inline const char* readEightDigits(const char* at, std::uint64_t& digits) noexcept {
    const std::uint64_t characters = loadEight(at, '0');
    const std::uint64_t marks = markNoDigits(characters);
    const std::uint64_t low = (marks ^ (marks - 1)) >> 8U; // the bytes before the point
    std::uint64_t joined = (characters & low) | (loadEight(at + 1, '0') & ~low);
    if (marks == 0 || at[countBelow(marks)] != '.' || markNoDigits(joined) != 0) {
        return nullptr;
    }
    // Neighbours become numbers of two, four and eight digits (D. Lemire, "Number parsing at a
    // gigabyte per second", 2021).
    joined = (joined * (1 + (10ULL << 8U)) >> 8U) & 0x00FF00FF00FF00FFU;
    joined = (joined * (1 + (100ULL << 16U)) >> 16U) & 0x0000FFFF0000FFFFU;
    digits = joined * (1 + (10000ULL << 32U)) >> 32U;
    return at + countBelow(marks) + 1;
}

} // namespace veldtrim::detail
