#include "inspect/picture/view.h"

#include "geometry/tolerance.h"
#include "inspect/picture/drawing.h"

#include <algorithm>
#include <cmath>

namespace veldtrim {

namespace {

bool canDraw(const BoundingBox& bounds) {
    return !bounds.isEmpty() && isDrawable(bounds.xMin) && isDrawable(bounds.xMax) &&
           isDrawable(bounds.yMin) && isDrawable(bounds.yMax);
}

/// Widens an interval on both sides to at least `length`.
void widen(double& low, double& high, double length) {
    const double missing = std::max(0.0, length - (high - low));
    low -= missing / 2.0;
    high += missing / 2.0;
}

} // namespace

bool isDrawable(double value) {
    return std::fabs(value) <= largestCoordinate;
}

BoundingBox boundsOfEverything(const Report& report) {
    BoundingBox all = BoundingBox::empty();
    for (const BoundingBox& bounds : {report.modelBounds, report.pointBounds}) {
        if (canDraw(bounds)) {
            all.add(bounds);
        }
    }
    return all;
}

BoundingBox boundsOfInterest(const Report& report) {
    const bool meet = canDraw(report.pointBounds) && canDraw(report.modelBounds) &&
                      report.pointBounds.overlaps(report.modelBounds);
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
