/// Why a feature of a map cannot become part of a boundary file.
#pragma once

#include <cstdint>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>

namespace veldtrim {

/// Thrown for a feature that a boundary file cannot hold. `what` is a sentence, without a full
/// stop, that names the feature.
class FeatureRefusal : public std::runtime_error {
public:
    /// `feature` names the feature, as in "feature 3"; `reason` is a predicate.
    FeatureRefusal(const std::string& feature, const std::string& reason)
        : std::runtime_error(feature + ' ' + reason) {}
};

/// Throws the FeatureRefusal for a geometry that is no polygon, such as "LineString".
[[noreturn]] void refuseGeometry(const std::string& feature, const std::string& type);

/// Throws the FeatureRefusal for an id that is no 32-bit integer, as written. `advice` says what
/// the user can do.
[[noreturn]] void refuseId(const std::string& feature, const std::string& id,
                           const std::string& advice = {});

/// Returns the 32-bit integer that the text or the number is; nothing if it is none. Blanks around
/// a text are not allowed.
std::optional<std::int32_t> integerId(std::string_view text);
std::optional<std::int32_t> integerId(double number);

} // namespace veldtrim
