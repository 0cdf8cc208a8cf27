/// Signals that ask the process to stop.
#pragma once

namespace veldtrim {

/// SIGINT (Ctrl-C), SIGTERM and SIGHUP (the terminal is closed), or only the first two.
enum class StopSignals : bool { ExceptHangUp, All };

/// Makes the signals be noted instead of ending the process. A signal that is ignored, as SIGHUP is
/// under nohup, stays ignored.
void noteStopSignals(StopSignals signals = StopSignals::All);

/// Whether one of these signals has arrived since.
bool stopRequested() noexcept;

} // namespace veldtrim
