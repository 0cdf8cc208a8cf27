#include "inspect/advice/columns.h"

#include "text/number.h"

#include <algorithm>
#include <cstddef>

namespace veldtrim {

namespace {

constexpr std::string_view whiteSpace = " \t\r\n\v\f";

std::string_view trimmed(std::string_view text) {
    const std::size_t first = text.find_first_not_of(whiteSpace);
    if (first == std::string_view::npos) {
        return {};
    }
    return text.substr(first, text.find_last_not_of(whiteSpace) - first + 1);
}

} // namespace

char likelySeparator(std::string_view line) {
    for (const char separator : {';', '\t', '|', ','}) {
        if (line.find(separator) != std::string_view::npos) {
            return separator;
        }
    }
    return ' ';
}

std::vector<std::string> fieldsOf(std::string_view line, char separator) {
    std::vector<std::string> fields;
    line = trimmed(line);
    while (!line.empty()) {
        const std::size_t end = std::min(
            separator == ' ' ? line.find_first_of(whiteSpace) : line.find(separator), line.size());
        fields.emplace_back(trimmed(line.substr(0, end)));
        if (end == line.size()) {
            return fields;
        }
        line.remove_prefix(end + 1);
        if (separator == ' ') {
            line = trimmed(line);
        }
    }
    if (!fields.empty()) {
        fields.emplace_back(); // the empty field after a trailing separator
    }
    return fields;
}

bool looksNumeric(std::string_view field) {
    std::string text(field);
    std::replace(text.begin(), text.end(), ',', '.');
    const char* at = text.data();
    double value = 0.0;
    return readNumber(at, text.data() + text.size(), value) && at == text.data() + text.size();
}

bool looksLikeRecord(const std::vector<std::string>& fields) {
    return fields.size() >= 2 && looksNumeric(fields[0]) && looksNumeric(fields[1]);
}

} // namespace veldtrim
