#include "inspect/record_reason.h"

#include "elevation/record.h"
#include "explain/wording.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>

namespace veldtrim {

namespace {

constexpr std::string_view blanks = " \t\r\v\f";

bool isDigit(char character) {
    return character >= '0' && character <= '9';
}

/// Returns where the first field of `text` ends: at the separator or, if that is a blank, at the
/// end of the first word. Returns npos if no other field follows.
std::size_t endOfFirstField(std::string_view text, char separator) {
    if (separator != ' ') {
        return text.find(separator);
    }
    const std::size_t word = text.find_first_not_of(blanks);
    return word == std::string_view::npos ? word : text.find_first_of(blanks, word);
}

/// Returns the reason for a field at the start of `rest` that is not a number. If blanks separate
/// the fields, leading blanks are not part of the field.
std::string notNumber(const char* name, std::string_view rest, char separator) {
    if (separator == ' ') {
        rest.remove_prefix(std::min(rest.find_first_not_of(blanks), rest.size()));
    }
    return std::string(name) +
           " is not a number: " + quoted(rest.substr(0, endOfFirstField(rest, separator)));
}

} // namespace

std::string reasonNotParsed(std::string_view line, ElevationHeader header) {
    if (line.find_first_not_of(blanks) == std::string_view::npos) {
        return "the line is empty";
    }
    if (!header.hasSeparator()) {
        return "the header names no separator, so no record of the file can be read";
    }
    ElevationPoint point;
    const RecordReading reading = readRecord(line, header, point);
    const std::string_view rest = line.substr(reading.place);
    const std::string separator = "separator (" + describeSeparator(header.separator) + ")";
    switch (reading.fault) {
    case RecordFault::NoX:
        return notNumber("x", rest, header.separator);
    case RecordFault::NoY:
        // If the separator is a blank, text that follows x without a blank belongs to x.
        return header.separator == ' ' && blanks.find(rest.front()) == std::string_view::npos
                   ? notNumber("x", line, header.separator)
                   : notNumber("y", rest, header.separator);
    case RecordFault::NothingAfterY:
        return "nothing follows y";
    default:
        break;
    }
    return rest.find(header.separator) == std::string_view::npos
               ? "no " + separator + " after x"
               : "the " + separator + " is too far from x";
}

std::string_view findDecimalComma(std::string_view record, ElevationHeader header) {
    if (header.separator == ',') {
        const auto commas = std::count(record.begin(), record.end(), ',');
        return header.columns() > 0 && commas + 1 >= 2 * std::ptrdiff_t{header.columns()}
                   ? record
                   : std::string_view();
    }
    // Looks for a comma between digits in the first two fields.
    std::size_t from = 0;
    for (int field = 0; field < 2 && from < record.size(); ++field) {
        const std::string_view rest = record.substr(from);
        const std::size_t end = std::min(endOfFirstField(rest, header.separator), rest.size());
        const std::size_t comma = rest.substr(0, end).find(',');
        if (comma != std::string_view::npos && comma > 0 && comma + 1 < end &&
            isDigit(rest[comma - 1]) && isDigit(rest[comma + 1])) {
            return rest.substr(0, end);
        }
        from += end + 1;
    }
    return {};
}

} // namespace veldtrim
