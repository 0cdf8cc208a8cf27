/// The two written forms of a status message: a line for a person, and a JSON line for a host.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace veldtrim::pulsenote {

enum class MessageKind { State, Finish, Failed, Error };

/// The line that shows a text message to a person, with its line feed.
///
/// Errors and failures begin with a word that marks them. One line feed at the end of `text` is
/// dropped. Any other control character could break the line or change the terminal; each of its
/// bytes is shown as \xHH. A byte from 0xA0 on that is not UTF-8 is kept: it may be a letter in
/// another encoding.
std::string personLine(MessageKind kind, std::string_view text);

/// The JSON object that carries a text message to a host, with its line feed.
///
/// Only state messages have `flag`. The line is always valid UTF-8: each byte of `text` that does
/// not belong to a valid UTF-8 sequence becomes U+FFFD. Control characters are escaped.
std::string hostLine(MessageKind kind, int code, std::string_view text, bool flag);

/// The JSON object that carries a position to a host, with its line feed. Empty if `position` is
/// not finite, because JSON cannot express that.
std::string hostProgressLine(double position, bool flag);

/// Length in bytes of the well-formed UTF-8 sequence at the start of `text` (Unicode, table 3-7),
/// or 0 if `text` does not start with one.
std::size_t utf8SequenceLength(std::string_view text);

} // namespace veldtrim::pulsenote
