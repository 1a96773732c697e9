#pragma once

namespace cell {

/// Lets interrupting the program (Ctrl-C, a closed terminal, a request to end) remove what is half written
/// before it ends as it would have ended otherwise. Call it before any other thread starts: they take over
/// what is blocked.
void RemoveScratchOnSignals();

} // namespace cell
