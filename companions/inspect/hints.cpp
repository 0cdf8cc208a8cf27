#include "inspect/hints.h"

#include "inspect/wording.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace veldtrim {

namespace {

/// Returns the overlap of two intervals as a share of the smaller one; 0 if they are disjoint.
double overlap(double aLow, double aHigh, double bLow, double bHigh) {
    const double low = std::max(aLow, bLow);
    const double high = std::min(aHigh, bHigh);
    if (low > high) {
        return 0.0;
    }
    const double smaller = std::min(aHigh - aLow, bHigh - bLow);
    return smaller > 0.0 ? (high - low) / smaller : 1.0;
}

double overlap(const BoundingBox& a, const BoundingBox& b) {
    return std::min(overlap(a.xMin, a.xMax, b.xMin, b.xMax),
                    overlap(a.yMin, a.yMax, b.yMin, b.yMax));
}

BoundingBox swapped(const BoundingBox& box) {
    return {box.yMin, box.xMin, box.yMax, box.xMax};
}

BoundingBox scaled(const BoundingBox& box, double factor) {
    return {box.xMin * factor, box.yMin * factor, box.xMax * factor, box.yMax * factor};
}

bool looksGeographic(const BoundingBox& box) {
    return std::min(box.xMin, box.yMin) >= -180.0 && std::max(box.xMax, box.yMax) <= 360.0;
}

struct Unit {
    double factor; ///< from the points' unit to that of the boundaries
    const char* words;
};
constexpr std::array<Unit, 6> units{{
    {1000.0, "the points look like kilometres, the boundaries like metres (a factor of 1000)"},
    {0.001, "the points look like metres, the boundaries like kilometres (a factor of 1000)"},
    {0.3048, "the points look like feet, the boundaries like metres (a factor of 0.3048)"},
    {1.0 / 0.3048, "the points look like metres, the boundaries like feet (a factor of 0.3048)"},
    {100.0, "the points look like metres, the boundaries like centimetres (a factor of 100)"},
    {0.01, "the points look like centimetres, the boundaries like metres (a factor of 100)"},
}};

/// An overlap of less than this share of the smaller bounds counts as none.
constexpr double noticeable = 0.05;

/// Describes the distance and the direction of the boundaries from the points.
std::string wayFrom(const BoundingBox& points, const BoundingBox& model) {
    const auto gap = [](double aLow, double aHigh, double bLow, double bHigh) {
        return bLow > aHigh ? bLow - aHigh : (aLow > bHigh ? bHigh - aLow : 0.0);
    };
    const double dx = gap(points.xMin, points.xMax, model.xMin, model.xMax);
    const double dy = gap(points.yMin, points.yMax, model.yMin, model.yMax);
    std::string way;
    if (dx != 0.0) {
        way = distance(std::fabs(dx)) + " units towards " + (dx > 0.0 ? "larger x" : "smaller x");
    }
    if (dy != 0.0) {
        way += (way.empty() ? "" : " and ") + distance(std::fabs(dy)) + " units towards " +
               (dy > 0.0 ? "larger y" : "smaller y");
    }
    return way;
}

void addHintsOnBounds(const Report& report, std::vector<std::string>& hints) {
    const BoundingBox& points = report.pointBounds;
    const BoundingBox& model = report.modelBounds;
    if (overlap(points, model) > 0.0) {
        return;
    }
    if (overlap(swapped(points), model) > noticeable) {
        hints.emplace_back("x and y look swapped: with x and y of the points exchanged, points and "
                           "boundaries overlap");
        return;
    }
    for (const Unit& unit : units) {
        if (overlap(scaled(points, unit.factor), model) > noticeable) {
            hints.push_back(std::string("the units differ: ") + unit.words);
            return;
        }
    }
    if (looksGeographic(points) != looksGeographic(model)) {
        hints.push_back(
            std::string("the coordinate systems differ: the ") +
            (looksGeographic(points) ? "points" : "boundaries") + " look like degrees, the " +
            (looksGeographic(points) ? "boundaries" : "points") + " like a projected grid");
        return;
    }
    hints.push_back(
        "the boundaries lie elsewhere, " + wayFrom(points, model) +
        " from the points: they may belong to another tile or another coordinate system");
}

void addHintsOnFiles(const Report& report, std::vector<std::string>& hints) {
    const auto count = [&](auto holds) {
        return std::count_if(report.files.begin(), report.files.end(), holds);
    };
    const auto say = [&](auto files, const std::string& text) {
        if (files > 0) {
            hints.push_back(std::to_string(files) + (files == 1 ? " file " : " files ") + text);
        }
    };
    say(count([](const FileReport& file) { return file.failed; }),
        "cannot be read to the end: the run would stop there");
    say(count([](const FileReport& file) { return file.decimalCommas > 0; }),
        "with decimal commas: numbers are read up to the comma; write decimal points");
    say(count([](const FileReport& file) {
            return file.taken && !file.failed && !file.header.hasSeparator();
        }),
        "with a node header of fewer than four characters: the fourth one names the separator, and "
        "without it no record is read");
    say(count([](const FileReport& file) { return file.lastLineUnread; }),
        "whose last line has no line feed: that line is not read");
    say(count([](const FileReport& file) {
            return file.taken && file.counts.records > 0 &&
                   file.counts.unparsed == file.counts.records;
        }),
        "in which no record can be read: see the reasons given for the file");
}

} // namespace

bool keepsLittle(const Report& report) {
    const std::int64_t points = report.total.kept() + report.total.outside;
    return points > 0 && report.total.kept() * 100 < points;
}

std::vector<std::string> findHints(const Report& report) {
    std::vector<std::string> hints;
    if (!report.failure.empty()) {
        return hints;
    }
    if (report.polygons.empty()) {
        hints.emplace_back("the boundary file holds no polygon in a group of type \"boundaries\"");
    } else if (!report.modelBounds.isEmpty() && !report.pointBounds.isEmpty() &&
               keepsLittle(report)) {
        addHintsOnBounds(report, hints);
    }
    addHintsOnFiles(report, hints);
    return hints;
}

} // namespace veldtrim
