/// Describes where and why a text is no JSON.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace veldtrim {

/// Returns a predicate such as "is broken JSON at line 3, column 7: unexpected end of input". The
/// parser has read `position` bytes of the text; `error` is the text of its exception, or a reason.
std::string describeBrokenJson(std::string_view text, std::size_t position, std::string_view error);

} // namespace veldtrim
