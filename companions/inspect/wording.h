/// Numbers, names and characters as the reports show them.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace veldtrim {

/// A number with a comma before each group of three digits.
std::string grouped(std::int64_t number);

/// A coordinate in full: the shortest decimal number that reads back as the same value.
std::string coordinate(double value);

/// A computed distance or area in at most nine significant digits.
std::string measure(double value);

/// The text with each control character replaced by "?".
std::string printable(std::string_view text);

/// The beginning of the text in quotes, printable.
std::string quoted(std::string_view text);

/// The separator as a person reads it: "blank", "tab", or the character in quotes.
std::string describeSeparator(char separator);

} // namespace veldtrim
