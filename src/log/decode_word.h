#pragma once

#include "platform/values/text.h"

namespace quorvel::mGlobals {

/// Turns a message back from its mirrored alphabet: a to z, A to Z and 0 to 9 each mirrored within
/// itself, every other byte as it is. Its own inverse, so it is the encoder as well
/// (`docs/wire-format.md`).
[[nodiscard]] Text mDecodeWordReverse(const Text& text);

}  // namespace quorvel::mGlobals
