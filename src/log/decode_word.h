#pragma once

#include "platform/values/text.h"

namespace quorvel::mGlobals {

/// Mirrors a text (`docs/wire-format.md`): a to z, A to Z and 0 to 9 are reversed, each within its
/// own kind, and all other bytes stay. Mirroring twice gives the first text again, so the function
/// both decodes and encodes.
[[nodiscard]] Text mDecodeWordReverse(const Text& text);

}  // namespace quorvel::mGlobals
