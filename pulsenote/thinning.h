/// Decides which positions of a run are news, and which steps can be skipped without a computation.
#pragma once

#include <cstdint>
#include <optional>

namespace veldtrim::pulsenote {

/// The positions of the steps of one stretch on the run's scale of 0 to 100.
struct StretchScale {
    double start;
    double end;
    int steps;

    /// The position to deliver: start + (end - start) * step / steps, or `start` if `steps` is not
    /// positive. It is rounded to the nearest thousandth, but never up to 100, which means that the
    /// end is reached.
    ///
    /// It may be infinite or NaN, depending on the numbers of the stretch. As `step` increases, it
    /// never decreases if end >= start, and otherwise never increases.
    [[nodiscard]] double position(int step) const;
};

/// Whether `position` must be delivered after `last`, the position delivered last, if any.
///
/// A position is news if it is the first, if it differs from the last by at least 0.1, or if it is
/// 100 and the last was not. A position that is not finite is never news.
bool isNews(double position, std::optional<double> last);

/// A range of consecutive step numbers, empty by default.
class StepRange {
public:
    StepRange() = default;

    /// The steps from `first` to `last`, both included. `first` must not exceed `last`. If they are
    /// the smallest and the largest int, the range excludes `last`.
    StepRange(int first, int last);

    [[nodiscard]] bool contains(int step) const {
        return static_cast<std::uint32_t>(step) - first_ < count_;
    }

private:
    std::uint32_t first_ = 0;
    std::uint32_t count_ = 0;
};

class Stretch;

/// The state that all stretches of the process share.
struct Thinning {
    /// The position that was delivered last.
    std::optional<double> last;
    /// The only stretch with quiet steps, because those found for an earlier `last` are invalid.
    Stretch* quietStretch = nullptr;
};

/// One stretch of progress. Stretches can overlap.
class Stretch {
public:
    /// `thinning` must outlive the stretch.
    Stretch(Thinning& thinning, const StretchScale& scale) : thinning_(thinning), scale_(scale) {}
    ~Stretch();
    Stretch(const Stretch&) = delete;
    Stretch& operator=(const Stretch&) = delete;

    /// Whether `step` is known not to be news. Takes one comparison, and is true for nearly all
    /// steps if they are reached in increasing order.
    [[nodiscard]] bool isQuiet(int step) const { return quiet_.contains(step); }

    /// Returns the position that the caller must deliver after reaching `step`, or nothing if it is
    /// not news.
    std::optional<double> reach(int step);

private:
    Thinning& thinning_;
    StretchScale scale_;
    StepRange quiet_;
};

} // namespace veldtrim::pulsenote
