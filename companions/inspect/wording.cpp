#include "inspect/wording.h"

#include <array>
#include <cstddef>
#include <cstdio>

namespace veldtrim {

namespace {

bool isControl(char character) {
    return static_cast<unsigned char>(character) < 0x20 || character == 0x7f;
}

std::string inDigits(double value, int digits) {
    std::array<char, 40> text{};
    const int length = std::snprintf(text.data(), text.size(), "%.*g", digits, value);
    return {text.data(), static_cast<std::size_t>(length > 0 ? length : 0)};
}

} // namespace

std::string grouped(std::int64_t number) {
    std::string digits = std::to_string(number);
    for (std::size_t at = digits.size(); at > 3 && digits[at - 4] != '-';) {
        at -= 3;
        digits.insert(at, ",");
    }
    return digits;
}

std::string coordinate(double value) {
    return inDigits(value, 9);
}

std::string distance(double value) {
    return inDigits(value, 6);
}

std::string printable(std::string_view text) {
    std::string shown(text);
    for (char& character : shown) {
        character = isControl(character) ? '?' : character;
    }
    return shown;
}

std::string quoted(std::string_view text) {
    constexpr std::size_t longest = 24;
    return '"' + printable(text.substr(0, longest)) + (text.size() > longest ? "...\"" : "\"");
}

std::string describeSeparator(char separator) {
    switch (separator) {
    case ' ':
        return "blank";
    case '\t':
        return "tab";
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
