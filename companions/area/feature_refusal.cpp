#include "area/feature_refusal.h"

#include <charconv>
#include <limits>
#include <system_error>

namespace veldtrim {

void refuseGeometry(const std::string& feature, const std::string& type) {
    throw FeatureRefusal(feature, "is a " + type +
                                      ", but a boundary file holds polygons only: remove such "
                                      "features, or convert them to polygons");
}

void refuseId(const std::string& feature, const std::string& id, const std::string& advice) {
    throw FeatureRefusal(feature, "has the id " + id +
                                      ", but ids are integers from -2147483648 to 2147483647" +
                                      (advice.empty() ? "" : ": " + advice));
}

std::optional<std::int32_t> integerId(std::string_view text) {
    std::int32_t id = 0;
    const char* const end = text.data() + text.size();
    const auto [at, error] = std::from_chars(text.data(), end, id);
    return error == std::errc() && at == end ? std::optional(id) : std::nullopt;
}

std::optional<std::int32_t> integerId(double number) {
    using Limits = std::numeric_limits<std::int32_t>;
    if (!(number >= Limits::min() && number <= Limits::max())) {
        return std::nullopt;
    }
    const auto id = static_cast<std::int32_t>(number);
    return static_cast<double>(id) == number ? std::optional(id) : std::nullopt;
}

} // namespace veldtrim
