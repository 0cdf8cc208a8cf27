#include "inspect/advice/header_advice.h"

#include "explain/shell_command.h"
#include "explain/wording.h"
#include "inspect/advice/columns.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <cstddef>
#include <vector>

namespace veldtrim {

namespace {

constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";
constexpr std::string_view quoteMarks = "\"'";

enum class Axis : std::uint8_t { X, Y, Z, G, Number, Unknown };

struct Name {
    std::string_view text;
    Axis axis;
};
constexpr std::array<Name, 32> usualNames{{
    {"x", Axis::X},         {"east", Axis::X},    {"easting", Axis::X},    {"e", Axis::X},
    {"lon", Axis::X},       {"long", Axis::X},    {"longitude", Axis::X},  {"rechtswert", Axis::X},
    {"ostwert", Axis::X},   {"y", Axis::Y},       {"north", Axis::Y},      {"northing", Axis::Y},
    {"n", Axis::Y},         {"lat", Axis::Y},     {"latitude", Axis::Y},   {"hochwert", Axis::Y},
    {"nordwert", Axis::Y},  {"z", Axis::Z},       {"h", Axis::Z},          {"height", Axis::Z},
    {"elevation", Axis::Z}, {"elev", Axis::Z},    {"alt", Axis::Z},        {"altitude", Axis::Z},
    {"hoehe", Axis::Z},     {"g", Axis::G},       {"id", Axis::Number},    {"fid", Axis::Number},
    {"nr", Axis::Number},   {"no", Axis::Number}, {"point", Axis::Number}, {"number", Axis::Number},
}};

/// The meanings of the names in a header, and the reason why a run does not accept it.
struct HeaderNames {
    std::vector<Axis> axes;
    std::string fault;
};

bool isMark(char character) {
    return std::string_view("#/%!").find(character) != std::string_view::npos;
}

Axis axisOf(std::string name) {
    std::transform(name.begin(), name.end(), name.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    const auto* const found = std::find_if(usualNames.begin(), usualNames.end(),
                                           [&](const Name& usual) { return usual.text == name; });
    return found == usualNames.end() ? Axis::Unknown : found->axis;
}

bool hasLetter(std::string_view text, int (*isKind)(int)) {
    return std::any_of(text.begin(), text.end(), [&](unsigned char c) { return isKind(c) != 0; });
}

/// Returns the fault of a header that is not accepted although it may name x, y and z.
std::string faultOfForm(std::string_view line, const std::vector<std::string>& fields) {
    if (fields.back().empty()) {
        return "it ends with a separator";
    }
    if (fields.size() > 4) {
        return "it names further columns";
    }
    const bool areLetters = std::all_of(
        fields.begin(), fields.begin() + std::min<std::ptrdiff_t>(3, std::ssize(fields)),
        [](const std::string& field) { return field.size() == 1; });
    if (!areLetters) {
        return "its columns have other names";
    }
    if (fields.size() == 4 && axisOf(fields[3]) != Axis::G) {
        return "it names a further column that is not g";
    }
    if (hasLetter(line, std::isupper) && hasLetter(line, std::islower)) {
        return "it mixes capital and small letters";
    }
    return "there are blanks around its names";
}

HeaderNames readNames(std::string_view line) {
    HeaderNames names;
    std::string text(line);
    if (line.starts_with(byteOrderMark)) {
        names.fault = "it begins with a byte-order mark";
        text.erase(0, byteOrderMark.size());
    } else if (!line.empty() && isMark(line.front())) {
        names.fault = "it begins with the mark of a comment";
        text.erase(0, std::min(text.find_first_not_of("#/%! \t"), text.size()));
    }
    if (text.find_first_of(quoteMarks) != std::string::npos) {
        names.fault = names.fault.empty() ? "its names are in quotes" : names.fault;
        std::erase_if(text, [](char c) { return quoteMarks.find(c) != std::string_view::npos; });
    }
    const std::vector<std::string> fields = fieldsOf(text, likelySeparator(text));
    std::transform(fields.begin(), fields.end(), std::back_inserter(names.axes), axisOf);
    if (names.fault.empty() && !fields.empty()) {
        names.fault = faultOfForm(text, fields);
    }
    return names;
}

bool beginsWith(const std::vector<Axis>& axes, std::initializer_list<Axis> wanted) {
    return axes.size() >= wanted.size() && std::equal(wanted.begin(), wanted.end(), axes.begin());
}

std::string letters(char separator, bool hasG) {
    std::string text;
    for (const char letter : std::string_view(hasG ? "xyzg" : "xyz")) {
        // sed reads "\t" as a tab. A tab itself would look like blanks in the report.
        const std::string between = separator == '\t' ? "\\t" : std::string(1, separator);
        text += (text.empty() ? "" : between) + letter;
    }
    return text;
}

std::string adviceOnMissingHeader(std::string_view line, const std::string& path) {
    const std::string header = letters(likelySeparator(line), false);
    return "the file has no header, its first line is a record. Put a header in front of it: " +
           commandFor("sed -i '1i" + header + "' {}", path);
}

} // namespace

std::string_view takeLine(std::string_view& text) {
    const std::size_t end = std::min(text.find('\n'), text.size());
    std::string_view line = text.substr(0, end);
    text.remove_prefix(std::min(end + 1, text.size()));
    if (line.ends_with('\r')) {
        line.remove_suffix(1);
    }
    return line;
}

FirstColumns firstColumnsOf(std::string_view line, ElevationHeader header) {
    const HeaderNames names = readNames(line);
    if (header.columns() > 0 || names.axes.size() < 3) {
        return FirstColumns::Usual;
    }
    if (names.axes[1] == Axis::X && names.axes[2] == Axis::Y) {
        return FirstColumns::Other;
    }
    return beginsWith(names.axes, {Axis::Y, Axis::X}) ? FirstColumns::YBeforeX
                                                      : FirstColumns::Usual;
}

std::string replaceHeader(char separator, bool hasG, const std::string& path) {
    return commandFor("sed -i '1s/.*/" + letters(separator, hasG) + "/' {}", path);
}

std::string removeFirstColumn(char separator, const std::string& path) {
    const std::string sign = separator == '\t' ? "\\t" : std::string(1, separator);
    const std::string column =
        separator == ' ' ? "^[ \\t]*[^ \\t]*[ \\t]*" : "^[^" + sign + "]*" + sign;
    return commandFor("sed -i '1s/.*/" + letters(separator, false) + "/; 2,$s/" + column + "//' {}",
                      path);
}

std::string exchangeColumns(char separator, const std::string& path) {
    const std::string sign = separator == '\t' ? "\\t" : std::string(1, separator);
    return commandFor(
        "awk -F'" + sign + "' -v OFS='" + sign + "' 'NR == 1 {print \"" +
            letters(separator, false) +
            "\"; next} {t = $1; $1 = $2; $2 = t; print}' {} > NEWFILE && mv NEWFILE {}",
        path);
}

std::string adviceOnHeader(std::string_view start, const std::string& path) {
    const std::string_view line = takeLine(start);
    const std::string_view record = takeLine(start);
    if (looksLikeRecord(fieldsOf(line, likelySeparator(line)))) {
        return adviceOnMissingHeader(line, path);
    }
    const char separator = likelySeparator(record.empty() ? line : record);
    const HeaderNames names = readNames(line);
    if (beginsWith(names.axes, {Axis::Y, Axis::X})) {
        return "the header names y before x; x must be the first column and y the second. Exchange "
               "them: " +
               exchangeColumns(separator, path);
    }
    if (beginsWith(names.axes, {Axis::Number, Axis::X, Axis::Y})) {
        return "the first column is a number, not x. Remove it: " +
               removeFirstColumn(separator, path);
    }
    const std::string form = "a header is x;y;z or x;y;z;g, in small or in capital letters, with "
                             "the separator of the records in place of the semicolon. ";
    if (!beginsWith(names.axes, {Axis::X, Axis::Y})) {
        return "the first line " +
               (line.empty() ? std::string("is empty") : quoted(line) + " names no columns x, y") +
               ": " + form + "If x and y are the first columns of the records, replace it: " +
               replaceHeader(separator, false, path);
    }
    const bool hasG =
        names.axes.size() == 4 && beginsWith(names.axes, {Axis::X, Axis::Y, Axis::Z, Axis::G});
    const std::string command = replaceHeader(separator, hasG, path);
    if (record.find('"') != std::string_view::npos) {
        return "the header is not accepted because " + names.fault +
               ", and the records hold quotes: " + form +
               "Remove the quotes and replace the header: " +
               commandFor("sed -i 's/\"//g' {}", path) + " && " + command;
    }
    return "the header is not accepted because " + names.fault + ": " + form +
           "Replace it: " + command;
}

} // namespace veldtrim
