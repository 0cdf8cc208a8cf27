#include "tiles/name_text.h"

#include <charconv>
#include <stdexcept>
#include <system_error>

namespace veldtrim {

namespace {

constexpr std::string_view hexDigits = "0123456789ABCDEF";
constexpr char escape = '%';

} // namespace

std::string encodeName(std::string_view name) {
    std::string text;
    for (const char c : name) {
        if (c > ' ' && c <= '~' && c != escape) {
            text += c;
            continue;
        }
        const auto byte = static_cast<unsigned char>(c);
        text += escape;
        text += hexDigits[byte >> 4U];
        text += hexDigits[byte & 0xFU];
    }
    return text;
}

std::string decodeName(std::string_view text) {
    std::string name;
    while (!text.empty()) {
        if (text.front() != escape) {
            name += text.front();
            text.remove_prefix(1);
            continue;
        }
        const std::string_view digits = text.substr(1, 2);
        unsigned byte = 0;
        const auto [end, error] =
            std::from_chars(digits.data(), digits.data() + digits.size(), byte, 16);
        if (digits.size() != 2 || error != std::errc() || end != digits.data() + 2) {
            throw std::runtime_error("not the name of a file: " + std::string(text));
        }
        name += static_cast<char>(byte);
        text.remove_prefix(3);
    }
    return name;
}

} // namespace veldtrim
