/// Names of files as text that JSON can hold.
#pragma once

#include <string>
#include <string_view>

namespace veldtrim {

/// Returns the name with every byte that is not printable ASCII, and every "%", as "%" and two
/// hexadecimal digits. Names can consist of any bytes but JSON only of UTF-8.
std::string encodeName(std::string_view name);

/// Returns the name that encodeName returned `text` for. Throws std::runtime_error if there is
/// none.
std::string decodeName(std::string_view text);

} // namespace veldtrim
