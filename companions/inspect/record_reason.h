/// Why a line is no record, in words.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace veldtrim {

/// Why parseRecord does not take `line`, found by asking it about changed copies of the line. For a
/// line that it takes the answer means nothing.
std::string reasonNotParsed(std::string_view line, char format, char separator);

/// Whether x or y of a record seems to be written with a decimal comma, at which reading stops.
/// `columns` is the number of columns that the header names, 0 where it names none.
bool hasDecimalComma(std::string_view record, char separator, std::int32_t columns);

/// The separator as a person reads it: "blank", "tab", or the character in quotes.
std::string describeSeparator(char separator);

} // namespace veldtrim
