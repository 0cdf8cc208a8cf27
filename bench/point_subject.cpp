#include "point_subject.h"

#include "boundary/point_location.h"
#include "random.h"
#include "shapes.h"

#include <map>

namespace veldtrim::bench {

PointSubject& PointSubject::named(const std::string& shape) {
    static std::map<std::string, PointSubject> subjects;
    return subjects.try_emplace(shape, shape).first->second;
}

PointSubject::PointSubject(const std::string& shape) : shape_(shape) {
    const BoundaryModel model = makeModel(makeShape(shape));
    polygons_ = model.polygons();
    vertices_ = model.vertices();
}

BoundaryModel& PointSubject::warmModel() {
    if (!warmModel_) {
        warmModel_ = std::make_unique<BoundaryModel>(makeModel(makeShape(shape_)));
        // The model builds its index once it has been asked often enough for that to pay.
        constexpr std::size_t often = 20'000;
        for (std::size_t i = 0; i < often; ++i) {
            warmModel_->isInBoundary(randomPoints()[i]);
        }
    }
    return *warmModel_;
}

bool PointSubject::walk(const ElevationPoint& point) {
    for (BoundaryPolygon& polygon : polygons_) {
        if (boundsContain(polygon, point) &&
            locatePoint(polygon, vertices_, point) != PointLocation::Outside) {
            return true;
        }
    }
    return false;
}

GeosArea& PointSubject::geosArea() {
    if (!geosArea_) {
        geosArea_ = std::make_unique<GeosArea>(makeShape(shape_));
        geosArea_->intersects(randomPoints().front()); // builds what it prepares
    }
    return *geosArea_;
}

const std::vector<ElevationPoint>& randomPoints() {
    static const std::vector<ElevationPoint> points = [] {
        Random random(5);
        std::vector<ElevationPoint> all(randomPointCount);
        for (ElevationPoint& point : all) {
            point.x = random.between(areaWest, areaWest + areaSide);
            point.y = random.between(areaSouth, areaSouth + areaSide);
        }
        return all;
    }();
    return points;
}

} // namespace veldtrim::bench
