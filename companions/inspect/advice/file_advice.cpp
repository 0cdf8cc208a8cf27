#include "inspect/advice/file_advice.h"

#include "explain/content_kind.h"
#include "explain/shell_command.h"
#include "explain/wording.h"
#include "inspect/advice/columns.h"
#include "inspect/advice/header_advice.h"
#include "run/input_files.h"
#include "run/total_file.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <cstddef>
#include <string_view>

#include <boost/filesystem/operations.hpp>
#include <boost/filesystem/path.hpp>

namespace veldtrim {

namespace {

namespace fs = boost::filesystem;

std::string inLowerCase(std::string text) {
    std::transform(text.begin(), text.end(), text.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    return text;
}

/// Whether the ending is common for text files of points.
bool isUsualForPoints(const std::string& extension) {
    constexpr std::array<std::string_view, 8> usual{".csv", ".asc",  ".dat", ".pts",
                                                    ".tsv", ".xyzi", ".grd", ""};
    return hasInputExtension(extension) ||
           std::find(usual.begin(), usual.end(), extension) != usual.end();
}

/// Returns how to convert a file of this kind to text with one point per line, or what is wrong
/// with its content; empty if there is nothing to say.
std::string adviceOnContent(ContentKind kind, const std::string& path) {
    const std::string what = "it holds " + std::string(nameOf(kind)) + ", not text. ";
    switch (kind) {
    case ContentKind::Empty:
        return "the file is empty: copy or export it again";
    case ContentKind::TextBom:
        return "the file begins with a byte-order mark. Remove it: " +
               commandFor("sed -i '1s/^\\xEF\\xBB\\xBF//' {}", path);
    case ContentKind::Utf16:
        return "it holds UTF-16 text. Convert it: " + commandToText(kind, path);
    case ContentKind::Gzip:
    case ContentKind::Zip:
        return what + "Unpack it: " + commandToText(kind, path);
    case ContentKind::Tiff:
        return what + "Convert it: " +
               commandFor(
                   "gdal_translate -of XYZ -co ADD_HEADER_LINE=YES {} NEWFILE && mv NEWFILE {}",
                   path);
    case ContentKind::Las:
        return what + "Convert it to text with one point per line under the header x;y;z";
    case ContentKind::Text:
    case ContentKind::Unreadable:
        return {};
    case ContentKind::Xml:
        return "it holds XML, not elevation points";
    default:
        return "it holds " + std::string(nameOf(kind)) + ", not elevation points";
    }
}

/// Returns advice on a file whose name does not have an accepted ending.
std::string adviceOnName(const std::string& start, const std::string& path) {
    const fs::path name(path);
    const std::string extension = inLowerCase(name.extension().string());
    if (!isUsualForPoints(extension)) {
        return {};
    }
    const std::string renamed = (name.parent_path() / name.stem()).string() +
                                (hasInputExtension(extension) ? extension : std::string(".xyz"));
    ElevationHeader header;
    std::string errorText;
    std::string_view rest = start;
    const bool isAccepted = readHeader(takeLine(rest), header, errorText);
    return (isAccepted ? "the file has an accepted header but is not read because of its name. "
                         "Rename it: "
                       : "if the file holds elevation points, rename it, then inspect it again: ") +
           commandFor("mv {} ", path) + commandFor("{}", renamed);
}

std::string adviceOnSkipped(const FileReport& file, const std::string& path) {
    boost::system::error_code error;
    if (!fs::is_regular_file(path, error)) {
        return fs::is_symlink(fs::symlink_status(path, error))
                   ? "it is a link that does not lead to a file: remove it or make it anew"
                   : "";
    }
    const ContentKind kind = contentKind(path);
    if (kind == ContentKind::Unreadable) {
        return "give yourself the permission to read it: " + commandFor("chmod u+r {}", path);
    }
    const std::string start = readStart(path);
    const bool isNamed = hasInputExtension(file.name);
    const bool isHandled =
        isNamed || isUsualForPoints(inLowerCase(fs::path(path).extension().string()));
    std::string advice = isHandled || kind == ContentKind::Gzip || kind == ContentKind::Las
                             ? adviceOnContent(kind, path)
                             : std::string();
    if (!advice.empty()) {
        return advice;
    }
    return isNamed ? adviceOnHeader(start, path) : adviceOnName(start, path);
}

void adviseOnCommas(const FileReport& file, const std::string& path,
                    std::vector<std::string>& advice) {
    if (file.decimalComma.empty()) {
        return;
    }
    advice.push_back(
        file.header.separator == ','
            ? "commas may both separate the columns and stand in the numbers: export the file "
              "again with decimal points"
            : "its numbers have decimal commas, which end a number: " + quoted(file.decimalComma) +
                  " is read as " + file.decimalComma.substr(0, file.decimalComma.find(',')) +
                  ". Write decimal points: " + commandFor("sed -i '2,$s/,/./g' {}", path));
}

std::string nodeSeparatorRule() {
    return "a node header names the separator as its character number " +
           std::to_string(nodeSeparatorIndex + 1);
}

/// Adds advice on a file without any readable record.
void adviseOnRecords(const FileReport& file, const std::string& path,
                     std::vector<std::string>& advice) {
    const std::string text = readStart(path);
    std::string_view rest = text;
    const std::string_view header = takeLine(rest);
    const std::string_view record = takeLine(rest);
    const char separator = likelySeparator(record);
    if (record.find('"') != std::string_view::npos) {
        advice.push_back("its records are in quotes. Remove them: " +
                         commandFor("sed -i 's/\"//g' {}", path));
    } else if (separator != file.header.separator && looksLikeRecord(fieldsOf(record, separator))) {
        const bool hasG = file.header.columns() == 4;
        advice.push_back(
            (file.header.hasSeparator()
                 ? "the header names the separator " + describeSeparator(file.header.separator)
                 : nodeSeparatorRule() + ", and " + quoted(header) + " has none") +
            ", but the records are separated by " + describeSeparator(separator) +
            ". Replace the header: " + replaceHeader(separator, hasG, path));
    } else if (!file.header.hasSeparator()) {
        advice.push_back(nodeSeparatorRule() + "; without it no record is read");
    } else {
        advice.emplace_back(
            "none of its records can be read: compare the lines named above with the "
            "header");
    }
}

void adviseOnFirstColumn(const FileReport& file, const std::string& path,
                         std::vector<std::string>& advice) {
    // A node header such as nr;x;y;z may name another separator than the records have.
    const std::string start = readStart(path);
    std::string_view rest = start;
    takeLine(rest);
    const char separator = likelySeparator(takeLine(rest));
    if (file.firstColumns == FirstColumns::YBeforeX) {
        advice.push_back("the header may name y before x, but the first column is always read as "
                         "x. If so, exchange them: " +
                         exchangeColumns(separator, path));
    } else if (file.firstColumns == FirstColumns::Other) {
        advice.push_back("the header names a column before x, but the first column is always read "
                         "as x. Remove it: " +
                         removeFirstColumn(separator, path));
    } else if (file.countsInFirstColumn) {
        advice.push_back("the first column is read as x, and it counts 1, 2, 3: it may be a number "
                         "of the points. If so, remove it: " +
                         removeFirstColumn(separator, path));
    }
}

} // namespace

std::vector<std::string> adviceOnFile(const FileReport& file, const std::string& path) {
    std::vector<std::string> advice;
    if (!file.taken || file.failed) {
        std::string sentence = file.failed ? std::string() : adviceOnSkipped(file, path);
        if (!sentence.empty()) {
            advice.push_back(std::move(sentence));
        }
        return advice;
    }
    adviseOnCommas(file, path, advice);
    adviseOnFirstColumn(file, path, advice);
    if (file.firstColumns == FirstColumns::Usual && file.counts.records > 0 &&
        file.counts.unparsed == file.counts.records) {
        adviseOnRecords(file, path, advice);
    }
    if (file.lastLineUnread) {
        advice.push_back("the last line has no line feed and is not read. Add one: " +
                         commandFor("echo >> {}", path));
    }
    if (file.name == totalFileName && file.counts.kept() > 0) {
        advice.emplace_back("a run writes its total to a file of this name and overwrites the "
                            "clipped one: rename the scan");
    }
    return advice;
}

} // namespace veldtrim
