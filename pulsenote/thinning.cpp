#include "thinning.h"

#include <cmath>
#include <limits>

namespace veldtrim::pulsenote {

namespace {

constexpr double scaleEnd = 100.0;

/// Positions are multiples of 0.001, so two positions less than 0.1 apart are at most 0.099 apart.
/// This limit lies between the two values, so rounding errors of a difference do not matter.
constexpr double newsDistance = 0.0995;

/// Whether a finite position is not news after `last`. The positions that are not news form one
/// interval. Unless `last` is 100, that interval ends before 100 or begins after it.
bool isQuiet(double position, double last) {
    if (!(std::fabs(position - last) < newsDistance)) {
        return false;
    }
    return last == scaleEnd || (last < scaleEnd ? position < scaleEnd : position > scaleEnd);
}

double unrounded(const StretchScale& scale, int step) {
    return scale.steps > 0 ? scale.start + (scale.end - scale.start) * step / scale.steps
                           : scale.start;
}

double toThousandths(double position) {
    // Larger doubles are hardly finer than thousandths.
    constexpr double largest = 1e12;
    constexpr double lastBeforeEnd = 99.999;
    if (!(std::fabs(position) < largest)) {
        return position;
    }
    const double rounded = std::round(position * 1000.0) / 1000.0;
    return position < scaleEnd && rounded >= scaleEnd ? lastBeforeEnd : rounded;
}

/// Estimates the last step that is not news, beginning at `step`: one step before the unrounded
/// positions leave the quiet interval, because rounding can shift that by one step.
int estimateLastQuiet(const StretchScale& scale, int step, double last) {
    const double perStep = scale.steps > 0 ? (scale.end - scale.start) / scale.steps : 0.0;
    double limit = last + std::copysign(newsDistance, perStep);
    if (last < scaleEnd ? limit > scaleEnd : last > scaleEnd && limit < scaleEnd) {
        limit = scaleEnd;
    }
    const double room = (limit - unrounded(scale, step)) / perStep - 1.0;
    constexpr int largest = std::numeric_limits<int>::max();
    if (!(room > 0.0)) {
        return step;
    }
    return room < static_cast<double>(largest) - step ? static_cast<int>(step + room) : largest;
}

/// Returns a range of steps, beginning at `step`, that are not news after `last`. It may end early,
/// and is empty if `step` is news. It is enough to check both ends: positions move in one
/// direction, so all steps between two steps in the quiet interval are in it too.
StepRange quietSteps(const StretchScale& scale, int step, double last) {
    if (!isQuiet(scale.position(step), last)) {
        return {};
    }
    const int end = estimateLastQuiet(scale, step, last);
    return {step, isQuiet(scale.position(end), last) ? end : step};
}

} // namespace

double StretchScale::position(int step) const {
    return toThousandths(unrounded(*this, step));
}

bool isNews(double position, std::optional<double> last) {
    return std::isfinite(position) && !(last && isQuiet(position, *last));
}

StepRange::StepRange(int first, int last)
    : first_(static_cast<std::uint32_t>(first)),
      count_(static_cast<std::uint32_t>(last) - static_cast<std::uint32_t>(first)) {
    if (count_ != std::numeric_limits<std::uint32_t>::max()) {
        ++count_;
    }
}

Stretch::~Stretch() {
    if (thinning_.quietStretch == this) {
        thinning_.quietStretch = nullptr;
    }
}

std::optional<double> Stretch::reach(int step) {
    const double position = scale_.position(step);
    const bool deliver = isNews(position, thinning_.last);
    if (deliver) {
        thinning_.last = position;
    }
    if (thinning_.last) {
        if (thinning_.quietStretch != nullptr) {
            thinning_.quietStretch->quiet_ = {};
        }
        thinning_.quietStretch = this;
        quiet_ = quietSteps(scale_, step, *thinning_.last);
    }
    return deliver ? std::optional(position) : std::nullopt;
}

} // namespace veldtrim::pulsenote
