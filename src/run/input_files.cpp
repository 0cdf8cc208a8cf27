#include "run/input_files.h"

#include "elevation/record_count.h"
#include "run/skipped_file.h"
#include "text/line_reader.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <string_view>
#include <system_error>

#include <boost/filesystem/directory.hpp>
#include <boost/filesystem/operations.hpp>

namespace veldtrim {

namespace fs = boost::filesystem;

namespace {

constexpr std::array<std::string_view, 3> inputExtensions{".txt", ".xyz", ".node"};

/// Far more than any check of a header needs. Because of the limit, a large file without line feeds
/// is not read into memory as a whole.
constexpr std::size_t headerReadLimit = std::size_t{64} << 10;

/// Returns why a regular file is skipped: it cannot be read, or its first line, of which it reads
/// at most `headerReadLimit` bytes, is not an accepted header. The result is empty if it is.
std::string reasonInHeader(const std::string& path) {
    try {
        LineReader lines(path, headerReadLimit);
        if (const std::error_code error = lines.openError()) {
            return cannotBeRead(error);
        }
        Line line;
        lines.next(line);
        ElevationHeader header;
        return readHeaderOrReason(line.text, header);
    } catch (const std::system_error& error) {
        return cannotBeRead(error.code());
    }
}

} // namespace

std::string reasonToSkip(const std::string& path) {
    // Reading a pipe or a device could block or never end.
    boost::system::error_code noStatus;
    const fs::file_status status = fs::status(path, noStatus);
    if (fs::exists(status) && !fs::is_regular_file(status)) {
        return "it is not a regular file";
    }
    return reasonInHeader(path);
}

bool hasInputExtension(std::string path) {
    const std::string_view view = path;
    return std::any_of(inputExtensions.begin(), inputExtensions.end(),
                       [&](std::string_view extension) { return view.ends_with(extension); });
}

std::string listInputExtensions() {
    std::string list;
    for (std::size_t i = 0; i < inputExtensions.size(); ++i) {
        const bool isLast = i + 1 == inputExtensions.size();
        list += i == 0 ? "" : isLast ? " or " : ", ";
        list += inputExtensions[i];
    }
    return list;
}

bool isInputFile(std::string path) {
    if (!hasInputExtension(path)) {
        return false;
    }
    const std::string reason = reasonToSkip(path);
    if (reason.empty()) {
        return true;
    }
    reportSkipped(path, reason);
    return false;
}

void visitFiles(const std::string& directory,
                const std::function<void(const std::string& path)>& visit) {
    for (const fs::directory_entry& entry : fs::directory_iterator(directory)) {
        if (!fs::is_directory(entry.status())) {
            visit(entry.path().string());
        }
    }
}

std::vector<InputFile> findInputFiles(const std::string& directory) {
    std::vector<InputFile> files;
    visitFiles(directory, [&](const std::string& path) {
        if (!isInputFile(path)) {
            return;
        }
        std::error_code openError;
        files.push_back({path, countRecords(path, openError)});
        if (openError) {
            reportSkipped(path, cannotBeRead(openError));
        }
    });
    return files;
}

} // namespace veldtrim
