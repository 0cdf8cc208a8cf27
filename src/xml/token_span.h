/// Splits the inside of a tag into tokens.
#pragma once

#include <array>
#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>

namespace veldtrim {

/// State of a scan over the tokens of a text. The only NUL of the text is its end, at `length`.
struct TokenSpan {
    const char* text;
    std::int32_t length;
    std::int32_t next = 0;   ///< where the search for the next token begins
    std::int32_t left = 0;   ///< first character of the token, without quotes
    std::int32_t right = -1; ///< last character of the token, without quotes
    bool isString = false;   ///< the token was quoted

    explicit TokenSpan(const std::string& document, std::int32_t start = 0)
        : text(document.c_str()), length(static_cast<std::int32_t>(document.size())), next(start) {}

    [[nodiscard]] char first() const { return text[left]; }
};

namespace detail {

// Classes of characters; one character can have several.
inline constexpr std::uint8_t whitespace = 1;
inline constexpr std::uint8_t endsToken = 2;
inline constexpr std::uint8_t quote = 4;

constexpr std::array<std::uint8_t, 256> makeCharacterClasses() {
    std::array<std::uint8_t, 256> classes{};
    for (const char c : std::string_view(" \t\n\r")) {
        classes[static_cast<unsigned char>(c)] = whitespace | endsToken;
    }
    for (const char c : std::string_view("<>=\\/?!")) {
        classes[static_cast<unsigned char>(c)] = endsToken;
    }
    classes[0] = endsToken;
    classes['"'] = quote;
    classes['\''] = quote;
    return classes;
}

inline constexpr std::array<std::uint8_t, 256> characterClasses = makeCharacterClasses();

inline bool hasClass(char c, std::uint8_t wanted) {
    return (characterClasses[static_cast<unsigned char>(c)] & wanted) != 0;
}

inline char foldCase(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c + ('a' - 'A')) : c;
}

} // namespace detail

/// Offset of the first `wanted` at or after `from`, or -1 if there is none.
inline std::int32_t findCharacter(const char* text, std::int32_t length, char wanted,
                                  std::int32_t from) {
    const void* const found =
        std::memchr(text + from, wanted, static_cast<std::size_t>(length - from));
    return found == nullptr ? -1
                            : static_cast<std::int32_t>(static_cast<const char*>(found) - text);
}

/// Moves the span to the next token: a quoted string, one of the characters `<>=\/?!`, or a run of
/// other characters without white space. A quoted string without a closing quote extends to the end
/// of the text. Returns false at the end of the text.
inline bool nextToken(TokenSpan& span) {
    const char* const text = span.text;
    std::int32_t now = span.next;
    span.isString = false;
    while (detail::hasClass(text[now], detail::whitespace)) {
        ++now;
    }
    if (now == span.length) {
        span.left = span.right = span.next = now;
        return false;
    }
    if (detail::hasClass(text[now], detail::quote)) {
        span.isString = true;
        span.left = now + 1;
        const std::int32_t closing = findCharacter(text, span.length, text[now], now + 1);
        span.right = (closing < 0 ? span.length : closing) - 1;
        span.next = closing < 0 ? span.length : closing + 1;
        return true;
    }
    span.left = now;
    if (detail::hasClass(text[now], detail::endsToken)) {
        ++now;
    } else {
        do {
            ++now;
        } while (!detail::hasClass(text[now], detail::endsToken));
    }
    span.right = now - 1;
    span.next = now;
    return true;
}

/// Whether the span's token is the requested name, or the part of it before a space, "=", "/" or
/// "[". The case of ASCII letters does not matter.
inline bool nameMatches(const TokenSpan& span, std::string_view requested) {
    const std::size_t length = static_cast<std::size_t>(span.right - span.left) + 1;
    if (requested.size() < length) {
        return false;
    }
    const char* const written = span.text + span.left;
    for (std::size_t i = 0; i < length; ++i) {
        if (detail::foldCase(written[i]) != detail::foldCase(requested[i])) {
            return false;
        }
    }
    if (requested.size() == length) {
        return true;
    }
    const char after = requested[length];
    return after == ' ' || after == '=' || after == '/' || after == '[';
}

/// The text of the span's token.
inline std::string_view tokenText(const TokenSpan& span) {
    return span.right < span.left || span.left >= span.length
               ? std::string_view()
               : std::string_view(span.text + span.left,
                                  static_cast<std::size_t>(span.right - span.left) + 1);
}

} // namespace veldtrim
