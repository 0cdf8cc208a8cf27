#include "explain/wording.h"

#include "text/number_text.h"

#include <array>
#include <charconv>
#include <cstddef>

namespace veldtrim {

namespace {

bool isControl(char character) {
    return static_cast<unsigned char>(character) < 0x20 || character == 0x7f;
}

/// Whether the byte is one of UTF-8 that does not begin a character.
bool continuesCharacter(char byte) {
    return (static_cast<unsigned char>(byte) & 0xC0U) == 0x80U;
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
    return numberText(value);
}

std::string measure(double value) {
    constexpr int digits = 9;
    std::array<char, 64> text{};
    const auto* const end = std::to_chars(text.data(), text.data() + text.size(), value,
                                          std::chars_format::general, digits)
                                .ptr;
    double rounded = value;
    std::from_chars(text.data(), end, rounded);
    return numberText(rounded);
}

std::string printable(std::string_view text) {
    std::string shown(text);
    for (char& character : shown) {
        character = isControl(character) ? '?' : character;
    }
    return shown;
}

std::string shortened(std::string_view text, std::size_t longest) {
    if (text.size() <= longest) {
        return printable(text);
    }
    while (longest > 0 && continuesCharacter(text[longest])) {
        --longest;
    }
    return printable(text.substr(0, longest)) + "...";
}

std::string quoted(std::string_view text) {
    constexpr std::size_t longest = 24;
    return '"' + shortened(text, longest) + '"';
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
