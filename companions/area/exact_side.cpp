#include "area/exact_side.h"

#include <array>
#include <cmath>
#include <cstddef>
#include <limits>

namespace veldtrim {

namespace {

/// A sum of doubles of increasing size that do not overlap: an expansion, as Shewchuk calls it. The
/// last one that is not 0 has the sign of the sum.
class Expansion {
public:
    /// Adds factor * other exactly (Shewchuk's Two-Product, after Dekker and Veltkamp). A fused
    /// multiply-add would be shorter, but not every C library computes it exactly.
    void addProduct(double factor, double other) {
        const double product = factor * other;
        const auto [factorHigh, factorLow] = split(factor);
        const auto [otherHigh, otherLow] = split(other);
        const double rest =
            ((product - factorHigh * otherHigh) - factorLow * otherHigh) - factorHigh * otherLow;
        add(factorLow * otherLow - rest);
        add(product);
    }

    [[nodiscard]] int sign() const {
        int sign = 0;
        for (std::size_t i = 0; i < size_; ++i) {
            if (terms_[i] != 0.0) {
                sign = terms_[i] > 0.0 ? 1 : -1;
            }
        }
        return sign;
    }

private:
    struct Halves {
        double high;
        double low;
    };

    static Halves split(double value) {
        constexpr double splitter = 134217729.0; // 2^27 + 1
        const double scaled = splitter * value;
        const double high = scaled - (scaled - value);
        return {high, value - high};
    }

    /// Shewchuk's Grow-Expansion.
    void add(double value) {
        for (std::size_t i = 0; i < size_; ++i) {
            const double sum = value + terms_[i];
            const double virtualTerm = sum - value;
            const double virtualValue = sum - virtualTerm;
            terms_[i] = (value - virtualValue) + (terms_[i] - virtualTerm);
            value = sum;
        }
        terms_[size_++] = value;
    }

    std::array<double, 12> terms_{}; // two for each of the six products below
    std::size_t size_ = 0;
};

/// The sign of the determinant, multiplied out so that there are no differences to round.
int exactSide(const BoundaryVertex& a, const BoundaryVertex& b, const BoundaryVertex& c) {
    Expansion sum;
    sum.addProduct(a.x, b.y);
    sum.addProduct(-a.y, b.x);
    sum.addProduct(b.x, c.y);
    sum.addProduct(-b.y, c.x);
    sum.addProduct(c.x, a.y);
    sum.addProduct(-c.y, a.x);
    return sum.sign();
}

} // namespace

int sideOf(const BoundaryVertex& from, const BoundaryVertex& to, const BoundaryVertex& point) {
    const double left = (from.x - point.x) * (to.y - point.y);
    const double right = (from.y - point.y) * (to.x - point.x);
    const double determinant = left - right;
    constexpr double unit = std::numeric_limits<double>::epsilon() / 2;
    constexpr double errorBound = (3.0 + 16.0 * unit) * unit; // Shewchuk's ccwerrboundA
    if (std::fabs(determinant) > errorBound * (std::fabs(left) + std::fabs(right))) {
        return determinant > 0.0 ? 1 : -1;
    }
    // A difference of doubles is only 0 if they are equal, so this case is exact, too.
    if (left == 0.0 && right == 0.0) {
        return 0;
    }
    return exactSide(from, to, point);
}

} // namespace veldtrim
