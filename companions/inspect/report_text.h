/// The report for people, and for programs.
#pragma once

#include "inspect/report.h"

#include <string>

namespace veldtrim {

/// Plain text, several lines. Control characters in names are shown as "?".
std::string textOf(const Report& report);

/// One JSON object, indented; bytes of names that are not UTF-8 become U+FFFD. The members are
/// those of docs/inspect.md.
std::string jsonOf(const Report& report);

/// A number with groups of three digits.
std::string grouped(std::int64_t number);

/// A coordinate in as few characters as tell it from its neighbours, at most nine digits.
std::string coordinate(double value);

} // namespace veldtrim
