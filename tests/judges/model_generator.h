/// Random boundary models and points that are difficult for a point test.
#pragma once

#include "boundary/model/boundary_model.h"
#include "geometry/tolerance.h"
#include "judges/model_builder.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <numbers>
#include <random>
#include <string>
#include <vector>

namespace veldtrim::test {

/// Appends the polygons of `other`.
inline void addRings(BoundaryModel& model, const BoundaryModel& other) {
    for (const BoundaryPolygon& polygon : other.polygons()) {
        Ring ring;
        for (const std::int32_t index : polygon.vertexIndices) {
            ring.push_back(other.vertices()[static_cast<std::size_t>(index)]);
        }
        addRing(model, ring);
    }
}

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

    explicit ModelGenerator(unsigned seed) : seed_(seed), random_(seed) {}

    [[nodiscard]] unsigned seed() const { return seed_; }

    BoundaryModel model(Kind kind) {
        BoundaryModel model;
        switch (kind) {
        case Kind::Random:
            for (std::size_t n = 1 + below(4); n > 0; --n) {
                addRing(model, ring(3 + below(40), [this] { return uniform(0, 100); }));
            }
            break;
        case Kind::Grid:
            for (std::size_t n = 1 + below(5); n > 0; --n) {
                addRing(model, ring(1 + below(20), [this] { return integer(8); }));
            }
            break;
        case Kind::Star:
            addRing(model, star(50 + below(2000), 0.8));
            break;
        case Kind::Spikes:
            return spikes(50 + below(1000), uniform(0, 0.9));
        case Kind::Many:
            for (std::size_t n = 5 + below(200); n > 0; --n) {
                addRing(model, moved(star(3 + below(10), 0.3), uniform(0.01, 0.2),
                                     uniform(-100, 100), uniform(-100, 100)));
            }
            break;
        case Kind::Degenerate:
            addDegenerate(model);
            break;
        case Kind::Borders:
            addAtCellBorders(model);
            break;
        case Kind::Offset:
            for (std::size_t n = 1 + below(3); n > 0; --n) {
                const double scale = std::ldexp(1.0, -static_cast<int>(below(40)));
                addRing(model, moved(star(20 + below(100), 0.5), scale, 745000.25, 4.1e6));
            }
            break;
        case Kind::Huge:
            for (std::size_t n = 1 + below(4); n > 0; --n) {
                addRing(model, ring(3 + below(12), [this] {
                            static const std::vector<double> sizes{1e308, 1e155, 1e20, 1e14,
                                                                   1e3,   1.0,   1e-3, 1e-160};
                            return uniform(-1, 1) * sizes[below(sizes.size())];
                        }));
            }
            break;
        }
        return model;
    }

    /// A ring whose vertices alternate between the radius 100 and a random one, which is at least
    /// `inner` times as large.
    BoundaryModel spikes(std::size_t vertices, double inner) {
        BoundaryModel model;
        Ring ring;
        for (std::size_t i = 0; i < vertices; ++i) {
            const double radius = i % 2 == 0 ? 100.0 : 100.0 * uniform(inner, 1.0);
            ring.push_back(onCircle(i, vertices, radius));
        }
        addRing(model, ring);
        return model;
    }

    /// A point near the model: on or next to a vertex or an edge, at the height of a vertex, at the
    /// border of a polygon's bounds, or anywhere.
    ElevationPoint point(const BoundaryModel& model) {
        const std::vector<BoundaryVertex>& vertices = model.vertices();
        const BoundaryVertex& any = vertices[below(vertices.size())];
        const BoundaryVertex& other = vertices[below(vertices.size())];
        const std::size_t at = below(vertices.size());
        const BoundaryVertex& next = vertices[(at + 1) % vertices.size()];
        switch (below(8)) {
        case 0:
            return {any.x, any.y};
        case 1:
            return {any.x, other.y};
        case 2:
            return {beside(any.x), beside(any.y)};
        case 3:
            return {uniform(-101, 101), any.y};
        case 4: {
            const double share = below(4) == 0 ? 0.5 : uniform(0, 1);
            return {beside(vertices[at].x + share * (next.x - vertices[at].x)),
                    beside(vertices[at].y + share * (next.y - vertices[at].y))};
        }
        case 5: {
            const BoundingBox& bounds = model.polygons()[below(model.polygons().size())].bounds;
            const double reach = uniform(-1.2e-6, 1.2e-6);
            return {below(2) == 0 ? bounds.xMin + reach : bounds.xMax + reach,
                    below(2) == 0 ? bounds.yMax : uniform(bounds.yMin / 2, bounds.yMax / 2)};
        }
        case 6:
            return {std::round(uniform(-1, 9)), std::round(uniform(-1, 9))};
        default:
            // Between two vertices, so that the size of the model does not matter.
            return {any.x + uniform(0, 1) * (other.x - any.x),
                    any.y + uniform(0, 1) * (other.y - any.y)};
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
        switch (below(4)) {
        case 0:
            return std::nextafter(value, -1e300);
        case 1:
            return std::nextafter(value, 1e300);
        default:
            return value;
        }
    }

    template <typename Coordinate>
    Ring ring(std::size_t size, Coordinate coordinate) {
        Ring ring;
        for (std::size_t i = 0; i < size; ++i) {
            const double x = coordinate();
            ring.push_back({x, coordinate()});
        }
        if (below(3) == 0) {
            ring.push_back(ring.front());
        }
        return ring;
    }

    static BoundaryVertex onCircle(std::size_t i, std::size_t of, double radius) {
        const double angle =
            2 * std::numbers::pi * static_cast<double>(i) / static_cast<double>(of);
        return {radius * std::cos(angle), radius * std::sin(angle)};
    }

    Ring star(std::size_t size, double inner) {
        Ring ring;
        for (std::size_t i = 0; i < size; ++i) {
            ring.push_back(onCircle(i, size, 100.0 * uniform(inner, 1.0)));
        }
        if (below(2) == 0) {
            std::reverse(ring.begin(), ring.end());
        }
        return ring;
    }

    static Ring moved(Ring ring, double scale, double x, double y) {
        for (BoundaryVertex& vertex : ring) {
            vertex = {x + scale * vertex.x, y + scale * vertex.y};
        }
        return ring;
    }

    void addDegenerate(BoundaryModel& model) {
        for (std::size_t n = 1 + below(40); n > 0; --n) {
            const BoundaryVertex from{uniform(0, 10), uniform(0, 10)};
            const BoundaryVertex to = below(2) == 0
                                          ? BoundaryVertex{integer(9), integer(9)}
                                          : BoundaryVertex{from.x + uniform(-1e-7, 1e-7), from.y};
            const std::vector<Ring> rings{
                {from},
                {from, to},
                {from, {to.x, from.y}, {uniform(0, 10), from.y}}, // flat
                {from, {from.x, to.y}, {from.x, uniform(0, 10)}}, // upright
                {from, to, from, to, from},                       // there and back
                {from, from, from, to, to, {to.x, from.y}}};
            addRing(model, rings[below(rings.size())]);
        }
    }

    /// Triangles with a tip where quarters of the index's cells meet, give or take some units in
    /// the last place. Two more triangles fix the area.
    void addAtCellBorders(BoundaryModel& model) {
        const double size = 1000.0;
        const double start = -uniform(0, size); // near the origin doubles are finer than the cells
        const double end = start + size;
        addRing(model, {{start, start}, {start + 1, start}, {start, start + 1}});
        addRing(model, {{end, end}, {end - 1, end}, {end, end - 1}});
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
            const double within = uniform(start + 2, end - 2);
            const BoundaryVertex tip =
                below(2) == 0 ? BoundaryVertex{border(), within} : BoundaryVertex{within, border()};
            const BoundaryVertex side{uniform(-1, 1), uniform(-1, 1)};
            addRing(model, {tip, {tip.x + side.x, tip.y}, {tip.x, tip.y + side.y}});
        }
    }

    unsigned seed_;
    std::mt19937 random_;
};

} // namespace veldtrim::test
