/// Which positions of a run are news, and which steps of a stretch need no look.
#pragma once

#include <cstdint>
#include <optional>

namespace veldtrim::pulsenote {

/// Where the steps of one stretch lie on the run's scale of 0 to 100.
struct StretchScale {
    double start;
    double end;
    int steps;

    /// The position that is delivered: start + (end - start) * step / steps, or `start` where
    /// `steps` is not positive, rounded to the thousandth, but never up to 100, the sign that the
    /// end is reached.
    ///
    /// Not finite where the numbers of the stretch make it so. From step to step it never falls
    /// where end >= start, and never rises otherwise.
    [[nodiscard]] double position(int step) const;
};

/// Whether `position` is to be delivered after `last`, the position delivered last, if any.
///
/// The first position is, one that differs from the last by 0.1 or more, and 100 unless it was the
/// last. One that is not finite never is.
bool isNews(double position, std::optional<double> last);

/// Consecutive step numbers; none at first.
class StepRange {
public:
    StepRange() = default;

    /// The steps from `first` to `last`, both included; first <= last. The range of all ints lacks
    /// its last.
    StepRange(int first, int last);

    [[nodiscard]] bool contains(int step) const {
        return static_cast<std::uint32_t>(step) - first_ < count_;
    }

private:
    std::uint32_t first_ = 0;
    std::uint32_t count_ = 0;
};

class Stretch;

/// What the stretches of a process share.
struct Thinning {
    /// The position that was delivered last.
    std::optional<double> last;
    /// The one stretch with quiet steps: those of any other were found for an earlier `last`.
    Stretch* quietStretch = nullptr;
};

/// One stretch of progress under way. Stretches may overlap.
class Stretch {
public:
    /// `thinning` outlives the stretch.
    Stretch(Thinning& thinning, const StretchScale& scale) : thinning_(thinning), scale_(scale) {}
    ~Stretch();
    Stretch(const Stretch&) = delete;
    Stretch& operator=(const Stretch&) = delete;

    /// Whether `step` is known to be no news. Costs one comparison, and is true for nearly all
    /// steps that are reached in increasing order.
    [[nodiscard]] bool isQuiet(int step) const { return quiet_.contains(step); }

    /// The position to deliver now that `step` is reached; none where it is no news. The caller
    /// delivers it.
    std::optional<double> reach(int step);

private:
    Thinning& thinning_;
    StretchScale scale_;
    StepRange quiet_;
};

} // namespace veldtrim::pulsenote
