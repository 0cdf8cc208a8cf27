/// The two written forms of a status message: a line for a person, and a JSON line for a host.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace veldtrim::pulsenote {

enum class MessageKind { State, Finish, Failed, Error };

/// The line that shows a text message to a person, with its line feed.
///
/// Errors and failures are marked by a word in front. One line feed at the end of `text` is
/// dropped; any other control character, which could break the line or drive the terminal, is shown
/// as \xHH, byte by byte. A byte from 0xA0 on that is not UTF-8 passes: it may be a letter of
/// another encoding.
std::string personLine(MessageKind kind, std::string_view text);

/// The JSON object that carries a text message to a host, with its line feed.
///
/// `flag` is part of state messages only. The line is valid UTF-8 whatever `text` holds: each byte
/// that does not belong to a valid UTF-8 sequence becomes U+FFFD. Control characters are escaped.
std::string hostLine(MessageKind kind, int code, std::string_view text, bool flag);

/// The JSON object that carries a position to a host, with its line feed; empty where `position`
/// is not finite, for which JSON has no number.
std::string hostProgressLine(double position, bool flag);

/// Length in bytes of the well-formed UTF-8 sequence at the start of `text` (Unicode, table 3-7);
/// 0 where none stands there.
std::size_t utf8SequenceLength(std::string_view text);

} // namespace veldtrim::pulsenote
