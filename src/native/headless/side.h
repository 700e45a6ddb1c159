#pragma once

#include <memory>

#include "native/native.h"

namespace quorvel::headless {

/// The native side of a companion, a program without a screen: the event loop, files and sockets of
/// the system. Messages go to standard error, all other dialogs are cancelled, and the companion
/// makes no window.
[[nodiscard]] std::unique_ptr<native::Side> MakeSide();

}  // namespace quorvel::headless
