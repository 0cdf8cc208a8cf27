#include "message_lines.h"

#include <array>
#include <charconv>
#include <cmath>

namespace veldtrim::pulsenote {

namespace {

constexpr std::string_view hexDigits = "0123456789abcdef";
constexpr std::string_view replacementCharacter = "\xEF\xBF\xBD";

unsigned char byteAt(std::string_view text, std::size_t index) {
    return static_cast<unsigned char>(text[index]);
}

void appendHex(std::string& line, unsigned char byte) {
    line += hexDigits[byte >> 4U];
    line += hexDigits[byte & 0xFU];
}

/// The control character that the well-formed `sequence` encodes, or -1 if it encodes another
/// character. The control characters from 0x80 to 0x9F have two bytes in UTF-8.
int controlCharacter(std::string_view sequence) {
    const unsigned char first = byteAt(sequence, 0);
    if (sequence.size() == 1) {
        return first < 0x20 || first == 0x7F ? first : -1;
    }
    if (sequence.size() == 2 && first == 0xC2 && byteAt(sequence, 1) < 0xA0) {
        return byteAt(sequence, 1);
    }
    return -1;
}

std::string_view personPrefix(MessageKind kind) {
    switch (kind) {
    case MessageKind::Error:
        return "error: ";
    case MessageKind::Failed:
        return "failed: ";
    case MessageKind::State:
    case MessageKind::Finish:
        break;
    }
    return "";
}

std::string_view kindName(MessageKind kind) {
    switch (kind) {
    case MessageKind::Finish:
        return "finish";
    case MessageKind::Failed:
        return "failed";
    case MessageKind::Error:
        return "error";
    case MessageKind::State:
        break;
    }
    return "state";
}

void appendJsonControl(std::string& line, int control) {
    switch (control) {
    case '\n':
        line += "\\n";
        break;
    case '\r':
        line += "\\r";
        break;
    case '\t':
        line += "\\t";
        break;
    default:
        line += "\\u00";
        appendHex(line, static_cast<unsigned char>(control));
    }
}

void appendJsonString(std::string& line, std::string_view text) {
    line += '"';
    while (!text.empty()) {
        const std::size_t length = utf8SequenceLength(text);
        if (length == 0) {
            line += replacementCharacter;
            text.remove_prefix(1);
            continue;
        }
        const std::string_view sequence = text.substr(0, length);
        if (const int control = controlCharacter(sequence); control >= 0) {
            appendJsonControl(line, control);
        } else {
            if (text.front() == '"' || text.front() == '\\') {
                line += '\\';
            }
            line += sequence;
        }
        text.remove_prefix(length);
    }
    line += '"';
}

std::string_view jsonBool(bool value) {
    return value ? "true" : "false";
}

} // namespace

std::size_t utf8SequenceLength(std::string_view text) {
    if (text.empty()) {
        return 0;
    }
    const unsigned char first = byteAt(text, 0);
    if (first < 0x80) {
        return 1;
    }
    if (first < 0xC2 || first > 0xF4) {
        return 0;
    }
    const std::size_t length = first < 0xE0 ? 2 : first < 0xF0 ? 3 : 4;
    if (text.size() < length) {
        return 0;
    }
    // The range of the second byte excludes overlong forms, surrogates and values above U+10FFFF.
    const unsigned char lowest = first == 0xE0 ? 0xA0 : first == 0xF0 ? 0x90 : 0x80;
    const unsigned char highest = first == 0xED ? 0x9F : first == 0xF4 ? 0x8F : 0xBF;
    if (byteAt(text, 1) < lowest || byteAt(text, 1) > highest) {
        return 0;
    }
    for (std::size_t i = 2; i < length; ++i) {
        if (byteAt(text, i) < 0x80 || byteAt(text, i) > 0xBF) {
            return 0;
        }
    }
    return length;
}

std::string personLine(MessageKind kind, std::string_view text) {
    if (text.ends_with('\n')) {
        text.remove_suffix(1);
    }
    std::string line(personPrefix(kind));
    line.reserve(line.size() + text.size() + 1);
    while (!text.empty()) {
        const std::size_t length = utf8SequenceLength(text);
        const std::string_view piece = text.substr(0, length == 0 ? 1 : length);
        // Terminals that do not use UTF-8 take a lone byte below 0xA0 for a control character.
        const bool isControl = length == 0 ? byteAt(piece, 0) < 0xA0 : controlCharacter(piece) >= 0;
        if (isControl) {
            for (const char c : piece) {
                line += "\\x";
                appendHex(line, static_cast<unsigned char>(c));
            }
        } else {
            line += piece;
        }
        text.remove_prefix(piece.size());
    }
    line += '\n';
    return line;
}

std::string hostLine(MessageKind kind, int code, std::string_view text, bool flag) {
    std::string line = "{\"kind\":\"";
    line += kindName(kind);
    line += "\",\"code\":";
    line += std::to_string(code);
    line += ",\"text\":";
    appendJsonString(line, text);
    if (kind == MessageKind::State) {
        line += ",\"flag\":";
        line += jsonBool(flag);
    }
    line += "}\n";
    return line;
}

std::string hostProgressLine(double position, bool flag) {
    if (!std::isfinite(position)) {
        return {};
    }
    // to_chars writes the shortest form that reads back as the same double: up to 24 characters.
    std::array<char, 32> number{};
    // Adding zero turns -0 into 0.
    const auto end = std::to_chars(number.data(), number.data() + number.size(), position + 0.0);
    std::string line = "{\"kind\":\"progress\",\"position\":";
    line.append(number.data(), end.ptr);
    line += ",\"flag\":";
    line += jsonBool(flag);
    line += "}\n";
    return line;
}

} // namespace veldtrim::pulsenote
