#include "explain/content_kind.h"

#include "explain/shell_command.h"
#include "platform/file.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <system_error>

namespace veldtrim {

namespace {

using namespace std::string_view_literals;

constexpr std::size_t startSize = 4096;

struct Signature {
    std::string_view bytes;
    ContentKind kind;
};
constexpr std::array<Signature, 12> signatures{{
    {"\xEF\xBB\xBF"sv, ContentKind::TextBom},
    {"\xFF\xFE"sv, ContentKind::Utf16},
    {"\xFE\xFF"sv, ContentKind::Utf16},
    {"\x1F\x8B"sv, ContentKind::Gzip},
    {"PK\x03\x04"sv, ContentKind::Zip},
    {"LASF"sv, ContentKind::Las},
    {"II*\0"sv, ContentKind::Tiff},
    {"MM\0*"sv, ContentKind::Tiff},
    {"SQLite format 3\0"sv, ContentKind::GeoPackage},
    {"\0\0\x27\x0A"sv, ContentKind::Shapefile},
    {"AutoCAD Binary DXF"sv, ContentKind::Dxf},
    {"\x03"sv, ContentKind::Dbase},
}};

std::string_view withoutBlanks(std::string_view text) {
    text.remove_prefix(std::min(text.find_first_not_of(" \t\r\n"), text.size()));
    return text;
}

bool contains(std::string_view text, std::string_view part) {
    return text.find(part) != std::string_view::npos;
}

/// Whether the text seems to be UTF-16 without a byte-order mark. In UTF-16, every second byte of
/// ASCII text is zero.
bool looksUtf16(std::string_view start) {
    std::array<std::size_t, 2> zeros{};
    for (std::size_t i = 0; i < start.size(); ++i) {
        zeros[i % 2] += start[i] == '\0' ? 1 : 0;
    }
    const std::size_t most = start.size() / 2;
    return most > 1 && ((zeros[0] == 0 && zeros[1] * 10 > most * 9) ||
                        (zeros[1] == 0 && zeros[0] * 10 > most * 9));
}

ContentKind kindOfXml(std::string_view start) {
    if (contains(start, "<kml")) {
        return ContentKind::Kml;
    }
    return contains(start, "opengis.net/gml") || contains(start, "<gml:") ? ContentKind::Gml
                                                                          : ContentKind::Xml;
}

ContentKind kindOfText(std::string_view start) {
    const std::string_view text = withoutBlanks(start);
    if (text.starts_with('<')) {
        return kindOfXml(text);
    }
    if (text.starts_with('{') || text.starts_with('[')) {
        return ContentKind::GeoJson;
    }
    if (text.starts_with("0")) {
        const std::string_view rest = withoutBlanks(text.substr(1));
        if (rest.starts_with("SECTION")) {
            return ContentKind::Dxf;
        }
    }
    return ContentKind::Text;
}

} // namespace

std::string readStart(const std::string& path) {
    std::string start(startSize, '\0');
    try {
        PlatformFile file = PlatformFile::openForReading(path);
        start.resize(file.read(start.data(), start.size()));
    } catch (const std::system_error&) {
        start.clear();
    }
    return start;
}

ContentKind contentKind(const std::string& path) {
    if (!PlatformFile::openForReading(path).isOpen()) {
        return ContentKind::Unreadable;
    }
    const std::string start = readStart(path);
    if (start.empty()) {
        return ContentKind::Empty;
    }
    for (const Signature& signature : signatures) {
        if (start.starts_with(signature.bytes)) {
            return signature.kind;
        }
    }
    if (!contains(start, "\0"sv)) {
        return kindOfText(start);
    }
    return looksUtf16(start) ? ContentKind::Utf16 : ContentKind::Binary;
}

std::string_view nameOf(ContentKind kind) {
    switch (kind) {
    case ContentKind::Utf16:
        return "UTF-16 text";
    case ContentKind::Gzip:
        return "a gzip archive";
    case ContentKind::Zip:
        return "a zip archive";
    case ContentKind::Las:
        return "a LAS or LAZ file";
    case ContentKind::Tiff:
        return "a TIFF image";
    case ContentKind::GeoPackage:
        return "a GeoPackage or another SQLite database";
    case ContentKind::Shapefile:
        return "a shapefile";
    case ContentKind::Dbase:
        return "the table of a shapefile (.dbf)";
    case ContentKind::Dxf:
        return "a DXF drawing";
    case ContentKind::GeoJson:
        return "a GeoJSON file";
    case ContentKind::Kml:
        return "a KML file";
    case ContentKind::Gml:
        return "a GML file";
    case ContentKind::Binary:
        return "a binary file";
    default:
        return {};
    }
}

std::string commandToText(ContentKind kind, const std::string& path) {
    const std::string replace = " > NEWFILE && mv NEWFILE {}";
    switch (kind) {
    case ContentKind::Gzip:
        return path.ends_with(".gz") ? commandFor("gunzip {}", path)
                                     : commandFor("gunzip -c < {}" + replace, path);
    case ContentKind::Zip:
        return commandFor("unzip -p {}" + replace, path);
    case ContentKind::Utf16: {
        const std::string start = readStart(path);
        const bool isMarked = start.starts_with('\xFF') || start.starts_with('\xFE');
        const char* const order = isMarked ? "" : start.starts_with('\0') ? "BE" : "LE";
        return commandFor(std::string("iconv -f UTF-16") + order + " -t UTF-8 {}" + replace, path);
    }
    default:
        return {};
    }
}

std::string commandToGeoJson(ContentKind kind, const std::string& path) {
    switch (kind) {
    case ContentKind::GeoPackage:
    case ContentKind::Shapefile:
    case ContentKind::Dxf:
    case ContentKind::Kml:
    case ContentKind::Gml:
        return commandFor("ogr2ogr -f GeoJSON NEWFILE {}", path);
    default:
        return {};
    }
}

} // namespace veldtrim
