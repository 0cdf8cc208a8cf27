#include "outlet.h"
#include "pulsenote.h"
#include "thinning.h"

#include <new>
#include <optional>

using veldtrim::pulsenote::isNews;
using veldtrim::pulsenote::outlet;
using veldtrim::pulsenote::quietSteps;
using veldtrim::pulsenote::StepWindow;
using veldtrim::pulsenote::StretchScale;

struct ProgressMessage::Stretch {
    Stretch(double start, double end, int steps) : scale{start, end, steps} {}
    Stretch(const Stretch&) = delete;
    Stretch& operator=(const Stretch&) = delete;
    ~Stretch();

    void reach(int step, bool flag);

    StretchScale scale;
    /// Steps that are no news as long as nothing else is delivered.
    StepWindow quiet;

    // The state of the one sender of the process.
    // NOLINTBEGIN(cppcoreguidelines-avoid-non-const-global-variables)

    /// The position that the process delivered last.
    static constinit std::optional<double> last;
    /// The one stretch whose `quiet` may hold steps. Where stretches overlap, each takes the right
    /// from the other, so that no window outlives the `last` that it was made for.
    static constinit Stretch* windowHolder;

    // NOLINTEND(cppcoreguidelines-avoid-non-const-global-variables)
};

// NOLINTBEGIN(cppcoreguidelines-avoid-non-const-global-variables): as above.
constinit std::optional<double> ProgressMessage::Stretch::last;
constinit ProgressMessage::Stretch* ProgressMessage::Stretch::windowHolder = nullptr;
// NOLINTEND(cppcoreguidelines-avoid-non-const-global-variables)

ProgressMessage::Stretch::~Stretch() {
    if (windowHolder == this) {
        windowHolder = nullptr;
    }
}

void ProgressMessage::Stretch::reach(int step, bool flag) {
    const double position = scale.position(step);
    if (isNews(position, last)) {
        last = position;
        outlet().sendProgress(position, flag);
    }
    if (last) {
        if (windowHolder != nullptr) {
            windowHolder->quiet = {};
        }
        quiet = quietSteps(scale, step, *last);
        windowHolder = this;
    }
}

// Without memory the stretch is silent: a run does not end for want of its progress.
ProgressMessage::ProgressMessage(double start, double end, int steps)
    : stretch_(new (std::nothrow) Stretch(start, end, steps)) {
    outlet().beginStretch(start, end, steps);
}

ProgressMessage::~ProgressMessage() = default;

void ProgressMessage::OnProgress(int step, bool flag) {
    if (stretch_ && !stretch_->quiet.contains(step)) {
        stretch_->reach(step, flag);
    }
}
