/// Splits lines of text into columns, whatever their separator.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace veldtrim {

/// Returns the most likely separator of the columns: the first of semicolon, tab, vertical bar and
/// comma, in this order, that occurs in the line, else a blank.
char likelySeparator(std::string_view line);

/// Returns the fields of the line without white space around them. If the separator is a blank, any
/// white space separates fields.
std::vector<std::string> fieldsOf(std::string_view line, char separator);

/// Whether the field is a number, possibly with a decimal comma.
bool looksNumeric(std::string_view field);

/// Whether there are at least two fields and the first two are numbers.
bool looksLikeRecord(const std::vector<std::string>& fields);

} // namespace veldtrim
