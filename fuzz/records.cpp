// Header, record and number reading: the input is an elevation file. Its lines, their count, the
// header's verdict and every record are judged by plain definitions, the numbers by the stream's.

#include "elevation/header.h"
#include "elevation/record.h"
#include "elevation/record_count.h"
#include "files.h"
#include "judges/elevation_rules.h"
#include "target.h"
#include "text/line_reader.h"

#include <veldtrim/xml_reader.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace {

using veldtrim::ElevationHeader;
using veldtrim::ElevationPoint;
using veldtrim::Line;
using veldtrim::LineReader;
using veldtrim::XMLReader;
using veldtrim::fuzz::rawLines;
using veldtrim::fuzz::require;
using veldtrim::fuzz::requireAsStream;
using veldtrim::fuzz::sameBits;
using veldtrim::fuzz::withoutLineEnd;

/// The lines of the file, read whole and in pieces.
void checkLines(const std::string& path, const std::vector<std::string_view>& expected) {
    LineReader reader(path);
    Line line;
    for (const std::string_view raw : expected) {
        require(reader.next(line), "there are as many lines as expected");
        require(line.raw == raw && line.text == withoutLineEnd(raw), "a line");
    }
    require(!reader.next(line) && line.raw.empty() && line.text.empty(), "the end of the lines");

    constexpr std::size_t pieceLength = 5;
    LineReader pieces(path, pieceLength);
    std::string all;
    std::string whole;
    while (pieces.next(line)) {
        require(line.text.size() <= pieceLength, "a piece is short");
        all += line.raw;
    }
    for (const std::string_view raw : expected) {
        whole += raw;
    }
    require(all == whole, "the pieces are the whole");
}

ElevationHeader checkHeader(const std::string& line) {
    ElevationHeader header{'?', '?', -1};
    std::string errorText = "?";
    const bool accepted = veldtrim::readHeader(line, header, errorText);
    const veldtrim::fuzz::HeaderRule rule = veldtrim::fuzz::headerRule(line);
    require(accepted == rule.accepted, "the header's verdict");
    require(header.format == rule.format, "the header's format");
    require(header.layout == rule.layout, "the header's layout");
    const bool isUntouched = rule.format == 'f';
    require(header.hasSeparator() == (isUntouched || rule.separator.has_value()) &&
                (!header.hasSeparator() || header.separator == rule.separator.value_or('?')),
            "the header's separator");
    require(errorText.empty() == (accepted || line.empty()), "the header's error text");
    return header;
}

/// `lines` are the line and others after it; empty if no line feed ends it.
void checkRecord(const std::string& line, std::string_view lines, char format, char separator) {
    ElevationPoint expected;
    const bool isRecord = veldtrim::fuzz::extractRecord(line, format, separator, expected);
    const auto check = [&](bool isRead, const ElevationPoint& point) {
        require(isRead == isRecord, "the record's verdict");
        require(!isRecord || (sameBits(point.x, expected.x) && sameBits(point.y, expected.y)),
                "the record's point");
    };
    ElevationPoint point;
    const bool isRead = veldtrim::parseRecord(line, format, separator, point);
    check(isRead, point);
    if (!lines.empty()) {
        Line first;
        const auto fault = veldtrim::readFirstRecord(lines, {format, separator, 0}, point, first);
        check(fault == veldtrim::RecordFault::None, point);
        require(first.text == line, "the record's line");
    }
}

void checkConversions(const std::string& line) {
    const auto with = [&](auto convert) {
        return [&line, convert](auto& value) { return convert(line, value); };
    };
    requireAsStream(0.0, line, with(XMLReader::stringToDouble));
    requireAsStream(0.0F, line, with(XMLReader::stringToFloat));
    requireAsStream(std::int32_t{0}, line, with(XMLReader::stringToInt));
    requireAsStream(std::string(), line, with(XMLReader::stringToString));
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text = veldtrim::fuzz::textOf(data, size);
    const std::string path = veldtrim::fuzz::scratch().write("records.xyz", text);
    const std::vector<std::string_view> lines = rawLines(text);
    checkLines(path, lines);
    require(veldtrim::countRecords(path) == std::count(text.begin(), text.end(), '\n') - 1,
            "the count of records");

    const ElevationHeader header =
        checkHeader(lines.empty() ? std::string() : std::string(withoutLineEnd(lines.front())));
    for (const std::string_view raw : lines) {
        const std::string line(withoutLineEnd(raw));
        const char* const stop = text.data() + (text.rfind('\n') + 1); // of whole lines
        const std::string whole(raw.data(), raw.ends_with('\n') ? stop : raw.data());
        for (const char format : {'x', 'n', 'y'}) {
            for (const char separator : {header.separator, ' ', ';'}) {
                checkRecord(line, whole, format, separator);
            }
        }
        checkConversions(line);
    }
    return 0;
}
