#include "inspect/advice/bounds_advice.h"

#include "explain/shell_command.h"
#include "explain/wording.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>

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

BoundingBox shifted(const BoundingBox& box, double dx) {
    return {box.xMin + dx, box.yMin, box.xMax + dx, box.yMax};
}

bool looksGeographic(const BoundingBox& box) {
    return std::min(box.xMin, box.yMin) >= -180.0 && std::max(box.xMax, box.yMax) <= 360.0;
}

struct Unit {
    double factor; ///< from the points' unit to that of the boundaries
    const char* words;
    const char* conversion; ///< of a coordinate of the boundaries to the points' unit
};
constexpr std::array<Unit, 6> units{{
    {1000.0, "the points may be in kilometres, the boundaries in metres", "/ 1000"},
    {0.001, "the points may be in metres, the boundaries in kilometres", "* 1000"},
    {0.3048, "the points may be in feet, the boundaries in metres", "/ 0.3048"},
    {1.0 / 0.3048, "the points may be in metres, the boundaries in feet", "* 0.3048"},
    {100.0, "the points may be in metres, the boundaries in centimetres", "/ 100"},
    {0.01, "the points may be in centimetres, the boundaries in metres", "* 100"},
}};

/// An explanation, and the overlap of points and boundaries if it is right.
struct Guess {
    double overlap;
    std::string text;
};

std::string wayFrom(const BoundingBox& points, const BoundingBox& model) {
    const auto gap = [](double aLow, double aHigh, double bLow, double bHigh) {
        return bLow > aHigh ? bLow - aHigh : (aLow > bHigh ? bHigh - aLow : 0.0);
    };
    const double dx = gap(points.xMin, points.xMax, model.xMin, model.xMax);
    const double dy = gap(points.yMin, points.yMax, model.yMin, model.yMax);
    std::string way;
    if (dx != 0.0) {
        way = measure(std::fabs(dx)) + " units towards " + (dx > 0.0 ? "larger x" : "smaller x");
    }
    if (dy != 0.0) {
        way += (way.empty() ? "" : " and ") + measure(std::fabs(dy)) + " units towards " +
               (dy > 0.0 ? "larger y" : "smaller y");
    }
    return way;
}

/// Introduces the command that moves the boundaries to the points. Records never change.
constexpr const char* changeBoundaries = ". If so, change the boundary file: ";

/// Guesses that eastings of one side begin with the number of their zone, as in 32,540,050, and
/// those of the other side do not.
void guessZone(const BoundingBox& points, const BoundingBox& model, const std::string& path,
               std::vector<Guess>& guesses) {
    constexpr double zoneUnit = 1e6;
    const double zones = std::round((points.xMin - model.xMin) / zoneUnit);
    if (zones == 0.0 || std::fabs(zones) > 60.0) {
        return;
    }
    const bool isInPoints = zones > 0.0;
    const std::string number = std::to_string(static_cast<int>(std::fabs(zones)));
    guesses.push_back(
        {overlap(shifted(points, -zones * zoneUnit), model),
         std::string("x of the ") + (isInPoints ? "points" : "boundaries") +
             " may have the number of its zone, " + number +
             ", in front of the easting: without it, points and boundaries overlap" +
             changeBoundaries +
             commandFor(isInPoints ? "sed -i -E 's/ x=\"([0-9]{6})/ x=\"" + number + "\\1/g' {}"
                                   : "sed -i -E 's/ x=\"" + number + "([0-9]{6})/ x=\"\\1/g' {}",
                        path)});
}

std::vector<Guess> guessCauses(const BoundingBox& points, const BoundingBox& model,
                               const std::string& path) {
    std::vector<Guess> guesses;
    guesses.push_back(
        {overlap(swapped(points), model),
         "x and y may be swapped: with x and y of the points exchanged, points and "
         "boundaries overlap. If it is the boundaries that are wrong, exchange "
         "theirs: " +
             commandFor("sed -i -E 's/ x=/ @=/g; s/ y=/ x=/g; s/ @=/ y=/g' {}", path)});
    guessZone(points, model, path, guesses);
    for (const Unit& unit : units) {
        guesses.push_back(
            {overlap(scaled(points, unit.factor), model),
             std::string("the units may differ: ") + unit.words + changeBoundaries +
                 commandFor("perl -i -pe 's{ ([xy])=\"([^\"]*)\"}{\" $1=\\\"\" . ($2 " +
                                std::string(unit.conversion) + ") . \"\\\"\"}ge' {}",
                            path)});
    }
    // An overlap of less than this share of the smaller bounds may be a coincidence.
    constexpr double noticeable = 0.05;
    std::erase_if(guesses, [](const Guess& guess) { return !(guess.overlap > noticeable); });
    std::stable_sort(guesses.begin(), guesses.end(),
                     [](const Guess& a, const Guess& b) { return a.overlap > b.overlap; });
    return guesses;
}

} // namespace

std::vector<std::string> adviceOnBounds(const BoundingBox& points, const BoundingBox& model,
                                        const std::string& path) {
    std::vector<std::string> advice;
    if (points.isEmpty() || model.isEmpty() || points.overlaps(model)) {
        return advice;
    }
    if (looksGeographic(points) != looksGeographic(model)) {
        const bool arePoints = looksGeographic(points);
        advice.push_back(std::string("the coordinate systems may differ: the ") +
                         (arePoints ? "points" : "boundaries") + " look like degrees, the " +
                         (arePoints ? "boundaries" : "points") +
                         " like metres of a projected grid. Export the boundaries again, in the "
                         "system of the points");
    }
    for (Guess& guess : guessCauses(points, model, path)) {
        advice.push_back(std::move(guess.text));
    }
    if (advice.empty()) {
        advice.push_back(
            "the boundaries lie elsewhere, " + wayFrom(points, model) +
            " from the points: they may belong to another tile or another coordinate system");
    }
    return advice;
}

} // namespace veldtrim
