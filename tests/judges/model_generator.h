/// Random boundary models and points that are difficult for a point test.
#pragma once

#include "boundary/model/boundary_model.h"
#include "geometry/tolerance.h"
#include "judges/model_builder.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <numbers>
#include <random>
#include <string>
#include <utility>
#include <vector>

namespace veldtrim::test {

class ModelGenerator {
public:
    enum class Kind {
        Random,     ///< rings that cross themselves and each other
        Grid,       ///< integer coordinates on a small grid: everything coincides
        Star,       ///< one ring without crossings, many vertices
        Spikes,     ///< one ring of long, close spikes
        Many,       ///< many small polygons
        Degenerate, ///< segments, flat polygons, single vertices, repeated vertices
        Borders,    ///< tips a few units in the last place from where cells of an index meet
        Offset,     ///< a small shape far from the origin: coordinates with few bits to spare
        Huge        ///< coordinates of very different magnitude
    };

    static std::vector<Kind> allKinds() {
        return {Kind::Random,     Kind::Grid,    Kind::Star,   Kind::Spikes, Kind::Many,
                Kind::Degenerate, Kind::Borders, Kind::Offset, Kind::Huge};
    }

    static std::string name(Kind kind) {
        static const std::vector<std::string> names{
            "Random", "Grid", "Star", "Spikes", "Many", "Degenerate", "Borders", "Offset", "Huge"};
        return names[static_cast<std::size_t>(kind)];
    }

    explicit ModelGenerator(unsigned seed) : random_(seed) {}

    BoundaryModel model(Kind kind) {
        switch (kind) {
        case Kind::Random:
            return rings(1 + below(4), [this] {
                return ring(3 + below(below(2) == 0 ? 20 : 400),
                            [this] { return uniform(0, 100); });
            });
        case Kind::Grid:
            return rings(1 + below(5),
                         [this] { return ring(1 + below(20), [this] { return integer(8); }); });
        case Kind::Star:
            return modelOf({circle(50 + below(2000), 0.8, 0.8)});
        case Kind::Spikes:
            return modelOf({circle(50 + below(1000), uniform(0, 0.9), 1)});
        case Kind::Many:
            return rings(5 + below(200), [this] {
                return moved(circle(3 + below(10), 0.3, 0.3), uniform(0.01, 0.2),
                             uniform(-100, 100), uniform(-100, 100));
            });
        case Kind::Degenerate:
            return rings(1 + below(40), [this] { return degenerate(); });
        case Kind::Borders:
            return atCellBorders();
        case Kind::Offset:
            return rings(1 + below(3), [this] {
                const double scale = std::ldexp(1.0, -static_cast<int>(below(40)));
                return moved(circle(20 + below(100), 0.5, 0.5), scale, 745000.25, 4.1e6);
            });
        default: // Kind::Huge
            return rings(1 + below(4), [this] {
                return ring(3 + below(12), [this] {
                    static const std::vector<double> sizes{1e308, 1e155, 1e20, 1e14,
                                                           1e3,   1.0,   1e-3, 1e-160};
                    return uniform(-1, 1) * sizes[below(sizes.size())];
                });
            });
        }
    }

    /// A ring around the origin with vertices at radiuses up to 100, which are at least `inner`
    /// times as large, those of every other vertex `outer` times.
    Ring circle(std::size_t size, double inner, double outer) {
        Ring ring;
        for (std::size_t i = 0; i < size; ++i) {
            const double radius = 100 * uniform(i % 2 == 0 ? outer : inner, 1);
            const double angle =
                2 * std::numbers::pi * static_cast<double>(i) / static_cast<double>(size);
            ring.push_back({radius * std::cos(angle), radius * std::sin(angle)});
        }
        if (below(2) == 0) {
            std::reverse(ring.begin(), ring.end());
        }
        return ring;
    }

    /// A point near the model: on or next to a vertex or an edge, at the height of a vertex, at the
    /// border of a polygon's bounds, or anywhere.
    ElevationPoint point(const BoundaryModel& model) {
        const std::vector<BoundaryVertex>& vertices = model.vertices();
        const std::size_t at = below(vertices.size());
        const BoundaryVertex& any = vertices[at];
        const BoundaryVertex& next = vertices[(at + 1) % vertices.size()];
        const BoundaryVertex& other = vertices[below(vertices.size())];
        const double share = below(4) == 0 ? 0.5 : uniform(0, 1);
        switch (below(7)) {
        case 0:
            return {beside(any.x), beside(any.y)};
        case 1:
            return {any.x, other.y};
        case 2:
            return {uniform(-101, 101), any.y};
        case 3:
            return {beside(std::lerp(any.x, next.x, share)),
                    beside(std::lerp(any.y, next.y, share))};
        case 4: {
            const BoundingBox& bounds = model.polygons()[below(model.polygons().size())].bounds;
            const double reach = uniform(-1.2e-6, 1.2e-6);
            return {below(2) == 0 ? bounds.xMin + reach : bounds.xMax + reach,
                    below(2) == 0 ? bounds.yMax : uniform(bounds.yMin / 2, bounds.yMax / 2)};
        }
        case 5:
            return {std::round(uniform(-1, 9)), std::round(uniform(-1, 9))};
        default:
            // Between two vertices, so that the size of the model does not matter.
            return {std::lerp(any.x, other.x, share), std::lerp(any.y, other.y, uniform(0, 1))};
        }
    }

private:
    std::size_t below(std::size_t limit) { return random_() % limit; }

    double uniform(double from, double to) {
        return from + (to - from) * (static_cast<double>(random_()) / 4294967296.0);
    }

    double integer(std::size_t most) { return static_cast<double>(below(most + 1)); }

    /// The value, or one of its neighbours.
    double beside(double value) {
        const std::array<double, 4> values{std::nextafter(value, -1e300),
                                           std::nextafter(value, 1e300), value, value};
        return values[below(values.size())];
    }

    template <typename MakeRing>
    static BoundaryModel rings(std::size_t count, MakeRing makeRing) {
        std::vector<Ring> rings(count);
        std::generate(rings.begin(), rings.end(), makeRing);
        return modelOf(rings);
    }

    template <typename Coordinate>
    Ring ring(std::size_t size, Coordinate coordinate) {
        Ring ring(size);
        for (BoundaryVertex& vertex : ring) {
            vertex = {coordinate(), coordinate()};
        }
        if (below(3) == 0) {
            ring.push_back(ring.front());
        }
        return ring;
    }

    static Ring moved(Ring ring, double scale, double x, double y) {
        for (BoundaryVertex& vertex : ring) {
            vertex = {x + scale * vertex.x, y + scale * vertex.y};
        }
        return ring;
    }

    Ring degenerate() {
        const BoundaryVertex from{uniform(0, 10), uniform(0, 10)};
        const BoundaryVertex to = below(2) == 0
                                      ? BoundaryVertex{integer(9), integer(9)}
                                      : BoundaryVertex{from.x + uniform(-1e-7, 1e-7), from.y};
        const std::vector<Ring> rings{{from},
                                      {from, to},
                                      {from, {to.x, from.y}, {uniform(0, 10), from.y}}, // flat
                                      {from, {from.x, to.y}, {from.x, uniform(0, 10)}}, // upright
                                      {from, to, from, to, from}, // there and back
                                      {from, from, from, to, to, {to.x, from.y}}};
        return rings[below(rings.size())];
    }

    /// Triangles with a tip where quarters of the index's cells meet, give or take some units in
    /// the last place. Two more triangles fix the area.
    BoundaryModel atCellBorders() {
        const double size = 1000.0;
        const double start = -uniform(0, size); // near the origin doubles are finer than the cells
        const double end = start + size;
        std::vector<Ring> rings{{{start, start}, {start + 1, start}, {start, start + 1}},
                                {{end, end}, {end - 1, end}, {end, end - 1}}};
        const double margin = indexMargin(std::max(-start, end));
        const auto border = [&] {
            const std::size_t cells = std::size_t{2} << below(3);
            const double share =
                static_cast<double>(1 + below(cells - 1)) / static_cast<double>(cells);
            double at = start - margin + (size + 4 * margin) * share;
            for (std::size_t steps = below(7); steps > 0; --steps) {
                at = beside(at);
            }
            return at;
        };
        for (std::size_t n = 20 + below(60); n > 0; --n) {
            BoundaryVertex tip{border(), uniform(start + 2, end - 2)};
            if (below(2) == 0) {
                std::swap(tip.x, tip.y);
            }
            rings.push_back(
                {tip, {tip.x + uniform(-1, 1), tip.y}, {tip.x, tip.y + uniform(-1, 1)}});
        }
        return modelOf(rings);
    }

    std::mt19937 random_;
};

} // namespace veldtrim::test
