#pragma once

/// Measures how long the main loop is held between two turns, where a turn begins when the loop's
/// own poll returns and ends when it polls again. Hooks the poll function of the default context of
/// GLib, on which the toolkit's main loop stands: waits for the X server or for a bus inside a turn
/// are no turns of the loop and count as time that it was held. Main thread.
namespace LoopClock {

struct Gap {
    double milliseconds = 0;
    // Of the main thread in that time; what is left it was blocked.
    double cpuMilliseconds = 0;    ///< on a processor
    double queuedMilliseconds = 0; ///< ready to run, and others were let run
};

/// False where the main loop does not stand on GLib.
[[nodiscard]] bool start();
/// The longest gap since the last call, and the number of turns.
[[nodiscard]] Gap takeLongest(long& turns);

} // namespace LoopClock
