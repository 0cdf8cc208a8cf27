#include "text/number_text.h"

#include "text/decimal.h"

#include <locale>
#include <sstream>

namespace veldtrim {
namespace {

/// The definition, and the judge of every text that the scans find unusual.
template <typename Value>
bool extract(const std::string& text, Value& value) {
    std::istringstream stream(text);
    stream.imbue(std::locale::classic());
    stream >> value;
    return !stream.fail();
}

} // namespace

bool fromString(const std::string& text, double& value) {
    const char* at = text.data();
    return scanDecimal(at, at + text.size(), value) == Scan::Number || extract(text, value);
}

bool fromString(const std::string& text, float& value) {
    const char* at = text.data();
    return scanDecimal(at, at + text.size(), value) == Scan::Number || extract(text, value);
}

bool fromString(const std::string& text, std::int32_t& value) {
    const char* at = text.data();
    return scanInteger(at, at + text.size(), value) == Scan::Number || extract(text, value);
}

bool fromString(const std::string& text, std::string& value) {
    return extract(text, value);
}

} // namespace veldtrim
