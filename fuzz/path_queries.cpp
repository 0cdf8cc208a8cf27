// Path queries: the input is paths, one a line, up to the first NUL, and then the document. Every
// query of XMLReader is asked for every path, and judged by the reference parser.

#include "judges/reference_cursor.h"
#include "target.h"

#include <veldtrim/xml_reader.h>

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace {

using veldtrim::XMLReader;
using veldtrim::fuzz::Draw;
using veldtrim::fuzz::ReferenceCursor;
using veldtrim::fuzz::require;
using veldtrim::fuzz::requireAsStream;

constexpr std::size_t longestText = 8192;
constexpr int mostPaths = 16;

bool expectString(ReferenceCursor& judge, const std::string& path, std::string& value) {
    judge.reset();
    const std::size_t slash = path.rfind('/');
    const std::string last = slash == std::string::npos ? path : path.substr(slash + 1);
    if (last.empty() || last.front() != '@') {
        if (!judge.traverse(path)) {
            return false;
        }
        value = judge.data();
        return true;
    }
    if (!judge.traverse(path.substr(0, slash))) {
        return false;
    }
    value = judge.attribute(last.substr(1));
    return !value.empty();
}

void checkNumbers(const XMLReader& reader, const std::string& path, bool leads,
                  const std::string& text) {
    const auto getDouble = [&](double& value) { return reader.getDouble(path, value); };
    requireAsStream(1.0, text, getDouble, leads);
    const auto getFloat = [&](float& value) { return reader.getFloat(path, value); };
    requireAsStream(1.0F, text, getFloat, leads);
    const auto getInt = [&](std::int32_t& value) { return reader.getInt(path, value); };
    requireAsStream(std::int32_t{1}, text, getInt, leads);
}

void checkItems(const XMLReader& reader, ReferenceCursor& judge, const std::string& path) {
    for (const std::string type : {"all", "Kestrune", "a"}) {
        std::vector<std::string> items{"untouched"};
        std::vector<std::string> expected = items;
        judge.reset();
        const bool leads = judge.traverse(path);
        if (leads) {
            expected.clear();
            while (judge.findChild("")) {
                const std::string name = judge.childName();
                if (path != "modules" || type == "all" || name == type ||
                    (type == "Kestrune" && name == "TavelReffModule")) {
                    expected.push_back(name);
                }
            }
        }
        require(reader.getItemsBelow(path, items, type) == leads, "getItemsBelow's verdict");
        require(items == expected, "getItemsBelow's names");
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    Draw input(veldtrim::fuzz::textOf(data, size));
    const std::string_view queries = input.until('\0');
    std::string text(input.rest().substr(0, longestText));
    text.resize(std::min(text.find('\0'), text.size()));

    XMLReader reader;
    ReferenceCursor judge(text);
    require(reader.setString(text) == judge.markup().ok, "setString");
    Draw paths(queries);
    int asked = 0;
    do {
        const std::string path(paths.until('\n'));
        std::string value = "untouched";
        std::string expected = value;
        const bool leads = expectString(judge, path, expected);
        require(reader.getString(path, value) == leads, "getString's verdict");
        require(value == expected, "getString's value");
        checkNumbers(reader, path, leads, value);
        checkItems(reader, judge, path);
        judge.reset();
        require(reader.getSubDocument(path) == (judge.traverse(path) ? judge.elementMarkup() : ""),
                "getSubDocument");
    } while (paths.more() && ++asked < mostPaths);
    return 0;
}
