/// A boundary file drawn from a fuzz input: valid in its form, wild in its numbers.
#pragma once

#include "boundary/file/boundary_reader.h"
#include "files.h"
#include "target.h"

#include <pulsenote_recorder.h>

#include <array>
#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace veldtrim::fuzz {

using DrawnRing = std::vector<std::array<std::string_view, 2>>;

struct DrawnBoundaries {
    std::string text;
    /// The coordinate texts of the rings in the groups that count, in order.
    std::vector<DrawnRing> rings;
};

/// Mostly small whole numbers, so that edges meet points and each other.
inline std::string_view drawCoordinate(Draw& input) {
    static constexpr std::array<std::string_view, 32> coordinates{
        "0",     "1",  "2",  "3",     "4",     "5",         "6",      "7",
        "8",     "0",  "1",  "2",     "3",     "4",         "5",      "6",
        "0.5",   "-1", "-8", "2.25",  "1e-7",  "3.0000001", "0.1",    "5e-324",
        "1e155", ".5", "7.", "-1e18", "1e308", "-1e308",    "1e-300", "4503599627370497.5"};
    return input.oneOf(coordinates);
}

inline std::string polygonText(const DrawnRing& ring) {
    std::string text = "<polygon id=\"7\">";
    for (const auto& [x, y] : ring) {
        text +=
            "<point x=\"" + std::string(x) + "\" y=\"" + std::string(y) + "\" segmenttype=\"0\"/>";
    }
    return text + "</polygon>";
}

/// Up and down between two heights: edges so many and so close that the point index cannot part
/// them.
inline DrawnRing drawSheaf(Draw& input) {
    static constexpr std::array<std::string_view, 8> abscissas{
        "3", "3", "3.0000001", "3.0000002", "3.0000003", "2.9999999", "5", "4"};
    DrawnRing ring;
    for (std::size_t points = 24 + input.below(200); points > 0; --points) {
        ring.push_back({input.oneOf(abscissas), points % 2 == 0 ? "0" : "8"});
    }
    return ring;
}

/// `withSheaf` allows one more polygon, drawn from what is left of the input.
inline DrawnBoundaries drawBoundaries(Draw& input, bool withSheaf = false) {
    DrawnBoundaries drawn;
    drawn.text = "<project><TavelDGM>";
    for (std::size_t groups = 1 + input.below(3); groups > 0; --groups) {
        const bool counts = input.below(4) != 3;
        drawn.text += counts ? "<group type=\"boundaries\">" : "<group type='other'>";
        for (std::size_t polygons = input.below(6); polygons > 0; --polygons) {
            DrawnRing ring;
            for (std::size_t points = input.below(12); points > 0; --points) {
                ring.push_back({drawCoordinate(input), drawCoordinate(input)});
            }
            drawn.text += polygonText(ring);
            if (counts) {
                drawn.rings.push_back(ring);
            }
        }
        drawn.text += "</group>";
    }
    if (withSheaf && input.below(3) == 1) {
        drawn.rings.push_back(drawSheaf(input));
        drawn.text += "<group type=\"boundaries\">" + polygonText(drawn.rings.back()) + "</group>";
    }
    drawn.text += "</TavelDGM></project>";
    return drawn;
}

/// Reads the boundary file `text` with the program's reader; its trace and its messages go nowhere.
inline bool readBoundaries(const std::string& text, BoundaryModel& model) {
    const QuietConsole quiet;
    pulsenote_recorder::clear();
    return readin_b_XML(scratch().write("boundary.xml", text), model);
}

} // namespace veldtrim::fuzz
