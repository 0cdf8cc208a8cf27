#include "geojson/broken_json.h"

#include "explain/wording.h"

#include <algorithm>

namespace veldtrim {

std::string describeBrokenJson(std::string_view text, std::size_t position,
                               std::string_view error) {
    const std::string_view read = text.substr(0, std::max<std::size_t>(position, 1) - 1);
    const std::size_t lineStart = read.rfind('\n') + 1; // 0 if there is none
    // The parser's text begins with a code in brackets and names the place after its own fashion.
    if (error.starts_with('[')) {
        error.remove_prefix(std::min(error.find("] ") + 2, error.size()));
    }
    if (const std::size_t place = error.find(": "); error.starts_with("parse error at")) {
        error.remove_prefix(place + 2);
    }
    constexpr std::size_t longestReason = 160; // it can quote the whole text
    return "is broken JSON at line " +
           std::to_string(std::count(read.begin(), read.end(), '\n') + 1) + ", column " +
           std::to_string(read.size() - lineStart + 1) + ": " + shortened(error, longestReason);
}

} // namespace veldtrim
