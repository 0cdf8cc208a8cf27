/// Processes whose parents have ended.
#pragma once

namespace veldtrim {

/// Makes this process the parent of every process that it started, directly or not, when that
/// one's own parent ends, instead of the first process of the system.
void adoptOrphans() noexcept;

/// Ends all processes whose parent this process is, and waits for their end: sends SIGTERM, and
/// SIGKILL to those that are left after so many milliseconds. Gives up after as long again. If
/// adoptOrphans was called before, this ends what those processes leave behind, too.
void endChildren(int patience);

} // namespace veldtrim
