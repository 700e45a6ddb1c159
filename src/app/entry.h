#pragma once

namespace quorvel {

namespace native {
class Side;
}

/// The whole life of the program on a native side; returns the status for the process.
[[nodiscard]] int RunQuorvel(native::Side& side);

/// The parts of `RunQuorvel` before and after the event loop, for tests that run the parts apart.
void _Start(native::Side& side);
[[nodiscard]] int _Finish();

}  // namespace quorvel
