#include "elevation/header.h"

#include <array>

namespace veldtrim {

namespace {

constexpr const char* wrongFirstCharacter =
    "ERROR: first character of node file must be one of n,N,x,X ";
constexpr const char* wrongXyzHeader =
    "ERROR: Using the xyz format, the first header line must be one of x;y;z , X;Y;Z , x;y;z;g , "
    "Y;Y;Z;G , while the separator (e.g. \";\" is variable";

/// The separator of a header that does not name one. No record contains a line feed, so no line of
/// such a file is a record.
constexpr char noSeparator = '\n';

char characterAt(std::string_view line, std::size_t position) {
    return position < line.size() ? line[position] : noSeparator;
}

/// Whether `line` consists of exactly the characters of `columns` with `separator` between them.
bool isColumnHeader(std::string_view line, std::string_view columns, char separator) {
    if (line.size() != 2 * columns.size() - 1) {
        return false;
    }
    for (std::size_t i = 0; i < line.size(); ++i) {
        if (line[i] != (i % 2 == 0 ? columns[i / 2] : separator)) {
            return false;
        }
    }
    return true;
}

struct XyzForm {
    std::string_view columns;
    std::int32_t layout;
};
constexpr std::array<XyzForm, 4> xyzForms{{{"xyz", 1}, {"XYZ", 1}, {"xyzg", 2}, {"XYZG", 2}}};

} // namespace

bool parseHeader(std::string_view line, char& separator, char& format, std::int32_t& layout,
                 std::string& errorText) {
    format = 'f';
    layout = 0;
    errorText.clear();
    if (line.empty()) {
        return false;
    }
    switch (line.front()) {
    case 'n':
    case 'N':
        format = line.front();
        separator = characterAt(line, nodeSeparatorIndex);
        return true;
    case 'x':
    case 'X':
        format = 'x';
        separator = characterAt(line, 1);
        for (const XyzForm& form : xyzForms) {
            if (isColumnHeader(line, form.columns, separator)) {
                layout = form.layout;
                return true;
            }
        }
        errorText = wrongXyzHeader;
        return false;
    default:
        errorText = wrongFirstCharacter;
        return false;
    }
}

bool ElevationHeader::hasSeparator() const {
    return separator != noSeparator;
}

bool readHeader(std::string_view line, ElevationHeader& header, std::string& errorText) {
    return parseHeader(line, header.separator, header.format, header.layout, errorText);
}

} // namespace veldtrim
