#pragma once

namespace quorvel {

namespace native {
class Side;
}

/// The whole life of the program on a native side; returns the status for the process.
[[nodiscard]] int RunQuorvel(native::Side& side);

/// The parts of it that a test runs one by one: everything before the event loop, and after it.
void _Start(native::Side& side);
[[nodiscard]] int _Finish();

}  // namespace quorvel
