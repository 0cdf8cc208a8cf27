/// Signals that ask the process to stop.
#pragma once

namespace veldtrim {

/// Makes SIGINT (Ctrl-C), SIGTERM and SIGHUP be noted instead of ending the process. A signal that
/// is ignored, as SIGHUP is under nohup, stays ignored.
void noteStopSignals();

/// Whether one of these signals has arrived since.
bool stopRequested() noexcept;

} // namespace veldtrim
