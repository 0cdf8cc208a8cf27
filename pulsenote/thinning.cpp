#include "thinning.h"

#include <cmath>
#include <limits>

namespace veldtrim::pulsenote {

namespace {

constexpr double ScaleEnd = 100.0;

/// Positions are thousandths, so two that are closer than 0.1 are at most 0.099 apart. The limit in
/// between keeps the rounding of a difference out of the verdict.
constexpr double NewsDistance = 0.0995;

/// Whether a step with a finite position is no news after `last`. The positions for which this
/// holds are one interval: 100 never lies within it, only at its end, unless `last` is 100.
bool isQuiet(double position, double last) {
    if (!(std::fabs(position - last) < NewsDistance)) {
        return false;
    }
    return last == ScaleEnd || (last < ScaleEnd ? position < ScaleEnd : position > ScaleEnd);
}

double toThousandths(double position) {
    // Beyond this, doubles are not much finer than thousandths.
    constexpr double Largest = 1e12;
    constexpr double LastBeforeEnd = 99.999;
    if (!(std::fabs(position) < Largest)) {
        return position;
    }
    const double rounded = std::round(position * 1000.0) / 1000.0;
    return position < ScaleEnd && rounded >= ScaleEnd ? LastBeforeEnd : rounded;
}

/// The farthest step from `quiet`, in the direction of `limit`, up to which all are quiet.
int farthestQuiet(const StretchScale& scale, int quiet, int limit, double last) {
    if (isQuiet(scale.position(limit), last)) {
        return limit;
    }
    std::int64_t inside = quiet;
    std::int64_t outside = limit;
    while (std::abs(outside - inside) > 1) {
        const std::int64_t middle = (inside + outside) / 2;
        (isQuiet(scale.position(static_cast<int>(middle)), last) ? inside : outside) = middle;
    }
    return static_cast<int>(inside);
}

} // namespace

double StretchScale::position(int step) const {
    return toThousandths(steps > 0 ? start + (end - start) * step / steps : start);
}

bool isNews(double position, std::optional<double> last) {
    return std::isfinite(position) && !(last && isQuiet(position, *last));
}

StepWindow::StepWindow(int low, int high)
    : low_(static_cast<std::uint32_t>(low)), count_(static_cast<std::uint32_t>(high) - low_) {
    if (count_ != std::numeric_limits<std::uint32_t>::max()) {
        ++count_;
    }
}

StepWindow quietSteps(const StretchScale& scale, int step, double last) {
    if (!isQuiet(scale.position(step), last)) {
        return {};
    }
    return {farthestQuiet(scale, step, std::numeric_limits<int>::min(), last),
            farthestQuiet(scale, step, std::numeric_limits<int>::max(), last)};
}

} // namespace veldtrim::pulsenote
