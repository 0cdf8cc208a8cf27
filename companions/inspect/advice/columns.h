/// The columns of a line of text, however it separates them.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace veldtrim {

/// The character that most likely separates the columns of the line: a semicolon, tab, vertical bar
/// or comma, whichever of them the line holds first in this order, else a blank.
char likelySeparator(std::string_view line);

/// The fields of the line, without white space around them. A blank stands for any white space.
std::vector<std::string> fieldsOf(std::string_view line, char separator);

/// Whether the field is a number; a decimal comma is allowed.
bool looksNumeric(std::string_view field);

/// Whether the first two of the fields are numbers.
bool looksLikeRecord(const std::vector<std::string>& fields);

} // namespace veldtrim
