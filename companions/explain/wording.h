/// Formats numbers, names and characters for the reports.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace veldtrim {

/// Returns a number with commas between groups of three digits.
std::string grouped(std::int64_t number);

/// Returns a coordinate in full: the shortest decimal number that reads back as the same value.
std::string coordinate(double value);

/// Returns a computed distance or area with at most nine significant digits.
std::string measure(double value);

/// Returns the text with each control character replaced by "?".
std::string printable(std::string_view text);

/// Returns the text, or its first `longest` bytes and "...", with control characters replaced by
/// "?". Characters of UTF-8 are not divided.
std::string shortened(std::string_view text, std::size_t longest);

/// Returns the beginning of the text in quotes, with control characters replaced by "?".
std::string quoted(std::string_view text);

/// Returns a description of the separator: "blank", "tab", the character in quotes, or its hex
/// code.
std::string describeSeparator(char separator);

} // namespace veldtrim
