#include "thinning.h"

#include <cmath>
#include <limits>

namespace veldtrim::pulsenote {

namespace {

constexpr double scaleEnd = 100.0;

/// Positions are thousandths, so two that are closer than 0.1 are at most 0.099 apart. The limit in
/// between keeps the rounding of a difference out of the verdict.
constexpr double newsDistance = 0.0995;

/// Whether a step with a finite position is no news after `last`. The positions for which this
/// holds are one interval: 100 never lies within it, only at its end, unless `last` is 100.
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
    // Beyond this, doubles are not much finer than thousandths.
    constexpr double largest = 1e12;
    constexpr double lastBeforeEnd = 99.999;
    if (!(std::fabs(position) < largest)) {
        return position;
    }
    const double rounded = std::round(position * 1000.0) / 1000.0;
    return position < scaleEnd && rounded >= scaleEnd ? lastBeforeEnd : rounded;
}

/// About the last step after `step` that is no news: where the unrounded positions leave the quiet
/// interval, less one step, since rounding may be off by one.
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

/// Steps from `step` on that are no news after `last`; none where `step` itself is news. Not
/// necessarily all of them, but the end is checked: positions move one way from step to step, so
/// between two steps within the quiet interval there is none outside of it.
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
