// Whole runs: a small workspace drawn from the input, clipped in process, and its output directory
// compared with what the stream's definition of a record and the plain walk say it must hold.

#include "drawn_boundaries.h"
#include "files.h"
#include "judges/elevation_rules.h"
#include "judges/plain_walk.h"
#include "run/clip_workspace.h"
#include "target.h"

#include <pulsenote_recorder.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace {

namespace fs = std::filesystem;

using veldtrim::BoundaryModel;
using veldtrim::ElevationPoint;
using veldtrim::fuzz::Draw;
using veldtrim::fuzz::require;
using veldtrim::fuzz::withoutLineEnd;
using Files = std::map<std::string, std::string>;

constexpr std::size_t mostLines = 40;

std::string drawScan(Draw& input) {
    static constexpr std::array<std::string_view, 16> headers{
        "x;y;z", "X;Y;Z", "x;y;z;g", "x y z", "x,y,z", "X\tY\tZ\tG",        "nod;", "N", "x;y;z\r",
        "",      "y",     "x;y",     "nxyz",  "x;y;z", "\xef\xbb\xbfx;y;z", "x;y;z"};
    static constexpr std::array<std::string_view, 8> separators{";", ";",  ";",   " ",
                                                                ",", "\t", " ; ", "y"};
    static constexpr std::array<std::string_view, 8> ends{"\n", "\n",   "\n",     "\r\n",
                                                          "\n", "\r\n", "\r\r\n", ""};
    std::string scan(input.oneOf(headers));
    scan += input.oneOf(ends);
    for (std::size_t lines = input.below(mostLines); lines > 0; --lines) {
        if (input.below(4) == 3) {
            scan += input.until(';');
        } else {
            scan += veldtrim::fuzz::drawCoordinate(input);
            scan += input.oneOf(separators);
            scan += veldtrim::fuzz::drawCoordinate(input);
            scan += input.oneOf(separators);
            scan += "9";
        }
        scan += input.oneOf(ends);
    }
    return scan;
}

Files drawScans(Draw& input) {
    static constexpr std::array<std::string_view, 8> names{
        "a.xyz", "b.txt", "c.node", "d.XYZ", ".txt", "e.xyz.bak", "txt", "total_node_count.txt"};
    Files scans;
    for (std::size_t count = input.below(5); count > 0; --count) {
        const std::string name(input.oneOf(names));
        scans[name] = drawScan(input);
    }
    return scans;
}

bool isAcceptedName(std::string_view name) {
    return name.ends_with(".txt") || name.ends_with(".xyz") || name.ends_with(".node");
}

struct Expectation {
    const BoundaryModel* model;
    Files files;
    int inputs = 0;
    int total = 0;

    void add(const std::string& name, const std::string& scan) {
        const std::vector<std::string_view> lines = veldtrim::fuzz::rawLines(scan);
        const std::string headerLine(lines.empty() ? "" : withoutLineEnd(lines.front()));
        const veldtrim::fuzz::HeaderRule header = veldtrim::fuzz::headerRule(headerLine);
        if (!isAcceptedName(name) || !header.accepted) {
            return;
        }
        ++inputs;
        std::string output = headerLine + "\n";
        int kept = 0;
        for (std::size_t i = 1; i < lines.size(); ++i) {
            const std::string line(withoutLineEnd(lines[i]));
            ElevationPoint point;
            // What follows the last line feed is no record.
            if (header.separator && lines[i].ends_with('\n') &&
                veldtrim::fuzz::extractRecord(line, 'x', *header.separator, point) &&
                veldtrim::test::plainWalk(model->polygons(), model->vertices(), point)) {
                output += line + "\n";
                ++kept;
            }
        }
        if (kept > 0) {
            files[name] = output;
            total += kept;
        }
    }
};

Files filesIn(const fs::path& directory) {
    Files files;
    for (const fs::directory_entry& entry : fs::directory_iterator(directory)) {
        files[entry.path().filename().string()] = veldtrim::test::readBytes(entry.path().string());
    }
    return files;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const veldtrim::test::TemporaryDirectory& directory = veldtrim::fuzz::scratch();
    const std::string workspace = directory.path("workspace");
    fs::remove_all(workspace);

    Draw input(veldtrim::fuzz::textOf(data, size));
    BoundaryModel model;
    require(veldtrim::fuzz::readBoundaries(veldtrim::fuzz::drawBoundaries(input).text, model),
            "the boundary file is read");
    const Files scans = drawScans(input);
    fs::create_directories(workspace + "/scans");
    for (const auto& [name, scan] : scans) {
        static_cast<void>(directory.write("workspace/scans/" + name, scan));
    }

    const veldtrim::fuzz::QuietConsole quiet;
    veldtrim::pulsenote_recorder::recordSteps(false);
    Expectation expected{&model, {}};
    for (const auto& [name, scan] : scans) {
        expected.add(name, scan);
    }
    const int result = veldtrim::clipWorkspace(model, workspace, "scans", "clipped",
                                               directory.path("boundary.xml"));
    require(result == (expected.inputs == 0 ? 1 : 0), "the run's result");
    if (result == 0) {
        expected.files["total_node_count.txt"] = std::to_string(expected.total) + "\n";
    }
    require(filesIn(workspace + "/clipped") == expected.files, "the output directory");
    require(filesIn(workspace + "/scans") == scans, "the inputs are unchanged");
    return 0;
}
