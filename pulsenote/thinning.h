/// Which positions of a run are news, and which steps of a stretch need no look at all.
#pragma once

#include <cstdint>
#include <optional>

namespace veldtrim::pulsenote {

/// Where the steps of one stretch stand on the run's scale of 0 to 100.
struct StretchScale {
    double start;
    double end;
    int steps;

    /// start + (end - start) * step / steps, or `start` where `steps` is not positive, to the
    /// thousandth: what is delivered. Never rounded up to 100, the sign that the end is reached.
    /// Not finite where the numbers of the stretch make it so. Never falls from step to step where
    /// end >= start, never rises otherwise.
    [[nodiscard]] double position(int step) const;
};

/// Whether `position` is to be delivered after `last`, the position delivered last, if any.
///
/// The first position is, one that differs from the last by 0.1 or more, and 100 unless it was the
/// last. One that is not finite never is.
bool isNews(double position, std::optional<double> last);

/// A run of step numbers without gaps; empty at first.
class StepWindow {
public:
    StepWindow() = default;

    /// The steps from `low` to `high`, both included; low <= high. Where that is every int there
    /// is, the last is left out.
    StepWindow(int low, int high);

    [[nodiscard]] bool contains(int step) const {
        return static_cast<std::uint32_t>(step) - low_ < count_;
    }

private:
    std::uint32_t low_ = 0;
    std::uint32_t count_ = 0;
};

/// The longest run of steps around `step` whose positions are finite and no news after `last`;
/// empty where that of `step` itself is news or not finite.
StepWindow quietSteps(const StretchScale& scale, int step, double last);

} // namespace veldtrim::pulsenote
