#pragma once

#include <cstdint>
#include <string>

/// Conversion of a text's beginning to a value, by definition the formatted extraction of an input
/// stream over the text in the classic locale, whatever the global locale is: leading white space
/// is skipped, and what follows the value is ignored. True when the extraction sets neither the
/// stream's fail nor its bad state; on false the value is what the stream left.
namespace veldtrim {

bool fromString(const std::string& text, double& value);
bool fromString(const std::string& text, float& value);
bool fromString(const std::string& text, std::int32_t& value);

/// The first word.
bool fromString(const std::string& text, std::string& value);

} // namespace veldtrim
