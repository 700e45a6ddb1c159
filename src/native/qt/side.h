#pragma once

#include <memory>

#include "native/native.h"

namespace quorvel::qt {

/// The desktop program's native side. One may be there at a time; `argc` and `argv` outlive it,
/// and lose the toolkit's own options.
[[nodiscard]] std::unique_ptr<native::Side> MakeSide(int& argc, char** argv);

}  // namespace quorvel::qt
