#include "shapes.h"

#include "random.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <numbers>
#include <stdexcept>

namespace veldtrim::bench {

namespace {

constexpr double fullTurn = 2.0 * std::numbers::pi;
constexpr BoundaryVertex areaCentre{areaWest + areaSide / 2, areaSouth + areaSide / 2};

double wholeMillimetres(double metres) {
    return std::round(metres * 1000.0) / 1000.0;
}

/// The vertices around `centre` that lie at these radii, at equal angles.
Outline aroundCentre(const std::vector<double>& radii, BoundaryVertex centre, double scale) {
    Outline outline;
    outline.reserve(radii.size());
    for (std::size_t i = 0; i < radii.size(); ++i) {
        const double angle = fullTurn * static_cast<double>(i) / static_cast<double>(radii.size());
        outline.push_back({wholeMillimetres(centre.x + scale * radii[i] * std::cos(angle)),
                           wholeMillimetres(centre.y + scale * radii[i] * std::sin(angle))});
    }
    return outline;
}

/// The factor that makes a polygon with these radii, at equal angles, cover `area`.
double scaleToArea(const std::vector<double>& radii, double area) {
    double products = 0.0;
    for (std::size_t i = 0; i < radii.size(); ++i) {
        products += radii[i] * radii[(i + 1) % radii.size()];
    }
    return std::sqrt(2.0 * area /
                     (products * std::sin(fullTurn / static_cast<double>(radii.size()))));
}

Outline square(double side) {
    const double half = side / 2;
    const double west = wholeMillimetres(areaCentre.x - half);
    const double east = wholeMillimetres(areaCentre.x + half);
    const double south = wholeMillimetres(areaCentre.y - half);
    const double north = wholeMillimetres(areaCentre.y + half);
    return {{west, south}, {east, south}, {east, north}, {west, north}};
}

Outline ring(std::size_t size) {
    Random random(1);
    constexpr std::array<double, 4> waves{3, 7, 19, 53};
    std::array<double, waves.size()> phases{};
    for (double& phase : phases) {
        phase = random.between(0.0, fullTurn);
    }
    const double step = fullTurn / static_cast<double>(size);
    std::vector<double> radii(size);
    for (std::size_t i = 0; i < size; ++i) {
        double radius = 1.0;
        for (std::size_t wave = 0; wave < waves.size(); ++wave) {
            radius += 0.2 / waves[wave] *
                      std::sin(waves[wave] * step * static_cast<double>(i) + phases[wave]);
        }
        // As rough as an edge is long, so that the line turns at every vertex.
        radii[i] = radius + std::min(step, 0.02) * random.between(-0.5, 0.5);
    }
    return aroundCentre(radii, areaCentre, scaleToArea(radii, areaSide * areaSide / 2));
}

Outline star(std::size_t size, double shortest, double longest) {
    Random random(2);
    std::vector<double> radii(size);
    for (double& radius : radii) {
        radius = random.between(shortest, longest);
    }
    return aroundCentre(radii, areaCentre, 1.0);
}

std::vector<Outline> polygons(std::size_t count) {
    constexpr std::size_t verticesEach = 20;
    const auto rows = static_cast<std::size_t>(std::ceil(std::sqrt(static_cast<double>(count))));
    const std::size_t columns = (count + rows - 1) / rows;
    const double width = areaSide / static_cast<double>(columns);
    const double height = areaSide / static_cast<double>(rows);
    Random random(3);
    std::vector<Outline> outlines;
    std::vector<double> radii(verticesEach);
    for (std::size_t i = 0; i < count; ++i) {
        for (double& radius : radii) {
            radius = random.between(0.9, 1.1);
        }
        const std::size_t row = i / columns;
        const std::size_t column = i % columns;
        const BoundaryVertex centre{areaWest + (static_cast<double>(column) + 0.5) * width,
                                    areaSouth + (static_cast<double>(row) + 0.5) * height};
        outlines.push_back(aroundCentre(radii, centre, scaleToArea(radii, width * height / 2)));
    }
    return outlines;
}

Outline frame(std::size_t size) {
    // Three sides of a square: up along one path, back along another one beside it.
    const std::size_t perSide = std::max<std::size_t>(size / 6, 1);
    Outline path;
    const auto walkFrom = [&](double gap, bool back) {
        const double west = areaWest - gap;
        const double south = areaSouth - gap;
        const double east = areaWest + areaSide + gap;
        const double north = areaSouth + areaSide + gap;
        std::array<BoundaryVertex, 4> corners{
            {{east, north}, {east, south}, {west, south}, {west, north}}};
        if (back) {
            std::reverse(corners.begin(), corners.end());
        }
        for (std::size_t side = 0; side < 3; ++side) {
            const BoundaryVertex from = corners[side];
            const BoundaryVertex to = corners[side + 1];
            for (std::size_t i = 0; i < perSide; ++i) {
                const double share = static_cast<double>(i) / static_cast<double>(perSide);
                path.push_back({wholeMillimetres(from.x + share * (to.x - from.x)),
                                wholeMillimetres(from.y + share * (to.y - from.y))});
            }
        }
        path.push_back(corners[3]);
    };
    walkFrom(20.0, false);
    walkFrom(10.0, true);
    return path;
}

} // namespace

std::vector<Outline> makeShape(const std::string& name) {
    if (name == "square") {
        return {square(areaSide * std::sqrt(0.5))};
    }
    if (name == "everything") {
        return {square(areaSide + 2.0)};
    }
    const std::size_t dash = name.find('-');
    if (dash != std::string::npos) {
        const std::string kind = name.substr(0, dash);
        const std::size_t size = std::stoul(name.substr(dash + 1));
        if (kind == "ring") {
            return {ring(size)};
        }
        if (kind == "spikes") {
            return {star(size, 3900.0, 4900.0)};
        }
        if (kind == "needles") {
            return {star(size, 100.0, 4900.0)};
        }
        if (kind == "polygons") {
            return polygons(size);
        }
        if (kind == "frame") {
            return {frame(size)};
        }
    }
    throw std::invalid_argument("no such shape: " + name);
}

BoundaryModel makeModel(const std::vector<Outline>& outlines) {
    BoundaryModel model;
    for (const Outline& outline : outlines) {
        BoundaryPolygon polygon;
        for (const BoundaryVertex& vertex : outline) {
            polygon.vertexIndices.push_back(model.addVertex(vertex));
        }
        polygon.computeBounds(model.vertices());
        model.addPolygon(polygon);
    }
    return model;
}

} // namespace veldtrim::bench
