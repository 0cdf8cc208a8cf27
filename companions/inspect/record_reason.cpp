#include "inspect/record_reason.h"

#include "elevation/record.h"

#include <algorithm>
#include <cstddef>

namespace veldtrim {

namespace {

constexpr std::string_view blanks = " \t\r\v\f";

bool isRecord(const std::string& line, char format, char separator) {
    ElevationPoint point;
    return parseRecord(line, format, separator, point);
}

bool isDigit(char character) {
    return character >= '0' && character <= '9';
}

/// Where the first field ends: at the separator, or with a blank as separator at the end of the
/// first word.
std::size_t endOfFirstField(std::string_view line, char separator) {
    if (separator != ' ') {
        return line.find(separator);
    }
    const std::size_t word = line.find_first_not_of(blanks);
    return word == std::string_view::npos ? word : line.find_first_of(blanks, word);
}

std::string quoted(std::string_view field) {
    constexpr std::size_t longest = 24;
    std::string text = "\"";
    for (const char character : field.substr(0, longest)) {
        text += static_cast<unsigned char>(character) < 0x20 || character == 0x7f ? '?' : character;
    }
    return text + (field.size() > longest ? "...\"" : "\"");
}

} // namespace

std::string reasonNotParsed(std::string_view line, char format, char separator) {
    if (line.find_first_not_of(blanks) == std::string_view::npos) {
        return "the line is empty";
    }
    if (separator == '\n') {
        return "the header names no separator, so no record of the file can be read";
    }
    if (isRecord(std::string(line) + ' ', format, separator)) {
        return "nothing follows y";
    }
    const std::string anyY = std::string(1, separator) + "0 ";
    const std::size_t end = endOfFirstField(line, separator);
    const std::string_view first = line.substr(0, end);
    // With a blank as separator the distance to y does not count.
    if (!isRecord(std::string(first) + anyY, format, separator) &&
        !isRecord(std::string(first) + " 0 ", format, ' ')) {
        return "x is no number: " + quoted(first);
    }
    if (end == std::string_view::npos) {
        return "no separator (" + describeSeparator(separator) + ") after x";
    }
    std::string_view second = line.substr(end + 1);
    second =
        second.substr(0, separator == ' ' ? second.find_first_of(blanks) : second.find(separator));
    if (isRecord("0" + std::string(1, separator) + std::string(second) + ' ', format, separator)) {
        return "the separator (" + describeSeparator(separator) + ") is too far from x";
    }
    return "y is no number: " + quoted(second);
}

bool hasDecimalComma(std::string_view record, char separator, std::int32_t columns) {
    if (separator == ',') {
        const auto commas = std::count(record.begin(), record.end(), ',');
        return columns > 0 && commas + 1 >= 2 * std::ptrdiff_t{columns};
    }
    // In the first two fields, between digits.
    std::size_t from = 0;
    for (int field = 0; field < 2 && from < record.size(); ++field) {
        const std::string_view rest = record.substr(from);
        const std::size_t end = std::min(endOfFirstField(rest, separator), rest.size());
        const std::size_t comma = rest.substr(0, end).find(',');
        if (comma != std::string_view::npos && comma > 0 && comma + 1 < end &&
            isDigit(rest[comma - 1]) && isDigit(rest[comma + 1])) {
            return true;
        }
        from += end + 1;
    }
    return false;
}

std::string describeSeparator(char separator) {
    switch (separator) {
    case ' ':
        return "blank";
    case '\t':
        return "tab";
    case '\n':
        return "none";
    default:
        break;
    }
    constexpr std::string_view hex = "0123456789ABCDEF";
    const auto byte = static_cast<unsigned char>(separator);
    if (byte < 0x20 || byte >= 0x7f) {
        return std::string("byte 0x") + hex[byte >> 4U] + hex[byte & 0xFU];
    }
    return std::string("\"") + separator + '"';
}

} // namespace veldtrim
