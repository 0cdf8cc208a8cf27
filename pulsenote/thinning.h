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
    /// positive. It is rounded to the nearest thousandth, but never up to 100, which says that the
    /// end is reached.
    ///
    /// It is not finite if the numbers of the stretch lead to that. As `step` increases, it never
    /// decreases if end >= start, and otherwise never increases.
    [[nodiscard]] double position(int step) const;
};

/// Whether `position` is to be delivered after `last`, the position delivered last, if any.
///
/// Delivered are the first position, each position that differs from the last by at least 0.1, and
/// 100 unless it was the last. A position that is not finite is never delivered.
bool isNews(double position, std::optional<double> last);

/// A range of consecutive step numbers, empty at first.
class StepRange {
public:
    StepRange() = default;

    /// The steps from `first` to `last`, both included; first <= last. If these are the smallest
    /// and the largest int, `last` is left out.
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
    /// The only stretch with quiet steps: those of the others were found for an earlier `last`.
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

    /// The position that the caller must deliver now that `step` is reached; none if it is not
    /// news.
    std::optional<double> reach(int step);

private:
    Thinning& thinning_;
    StretchScale scale_;
    StepRange quiet_;
};

} // namespace veldtrim::pulsenote
