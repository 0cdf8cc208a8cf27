#include "explain/shell_command.h"

namespace veldtrim {

namespace {

constexpr std::string_view harmless =
    "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789_./+:@%,=-";

std::string shellQuoted(const std::string& word) {
    if (!word.empty() && word.front() != '-' &&
        word.find_first_not_of(harmless) == std::string::npos) {
        return word;
    }
    // A file name that begins with a dash would be taken for an option.
    std::string text = word.starts_with('-') ? "'./" : "'";
    for (const char character : word) {
        text += character == '\'' ? std::string("'\\''") : std::string(1, character);
    }
    return text + '\'';
}

} // namespace

std::string commandFor(std::string_view pattern, const std::string& path) {
    std::string command(pattern);
    const std::string quotedPath = shellQuoted(path);
    for (std::size_t at = 0; (at = command.find("{}", at)) != std::string::npos;) {
        command.replace(at, 2, quotedPath);
        at += quotedPath.size();
    }
    return command;
}

} // namespace veldtrim
