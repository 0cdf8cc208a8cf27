#include "inspect/picture/view.h"

#include "inspect/picture/drawing.h"

#include <algorithm>
#include <cmath>

namespace veldtrim {

namespace {

bool isDrawable(const BoundingBox& bounds) {
    const BoundingBox& box = bounds;
    return !bounds.isEmpty() && isDrawable(box.xMin) && isDrawable(box.xMax) &&
           isDrawable(box.yMin) && isDrawable(box.yMax);
}

/// Widens an interval on both sides to at least `length`.
void widen(double& low, double& high, double length) {
    const double missing = std::max(0.0, length - (high - low));
    low -= missing / 2.0;
    high += missing / 2.0;
}

} // namespace

bool isDrawable(double value) {
    constexpr double largest = 1e15;
    return std::fabs(value) <= largest;
}

BoundingBox boundsOfEverything(const Report& report) {
    BoundingBox all = BoundingBox::empty();
    for (const BoundingBox& bounds : {report.modelBounds, report.pointBounds}) {
        if (isDrawable(bounds)) {
            all.add(bounds);
        }
    }
    return all;
}

BoundingBox boundsOfInterest(const Report& report) {
    const BoundingBox& points = report.pointBounds;
    const BoundingBox& model = report.modelBounds;
    const bool meet = isDrawable(report.pointBounds) && isDrawable(report.modelBounds) &&
                      points.xMin <= model.xMax && model.xMin <= points.xMax &&
                      points.yMin <= model.yMax && model.yMin <= points.yMax;
    return meet ? report.pointBounds : boundsOfEverything(report);
}

View viewOf(const BoundingBox& bounds, double longest, double shortest) {
    View view;
    view.shown = bounds.isEmpty() ? BoundingBox{0.0, 0.0, 1.0, 1.0} : bounds;
    BoundingBox& box = view.shown;
    const double extent =
        std::max({box.xMax - box.xMin, box.yMax - box.yMin, std::fabs(box.xMin) * 1e-9, 1e-9});
    const double edge = extent * 0.06;
    box = {box.xMin - edge, box.yMin - edge, box.xMax + edge, box.yMax + edge};
    view.scale = longest / std::max(box.xMax - box.xMin, box.yMax - box.yMin);
    widen(box.xMin, box.xMax, shortest / view.scale);
    widen(box.yMin, box.yMax, shortest / view.scale);
    view.left = margin;
    view.top = margin;
    view.width = (box.xMax - box.xMin) * view.scale;
    view.height = (box.yMax - box.yMin) * view.scale;
    return view;
}

} // namespace veldtrim
