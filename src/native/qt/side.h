#pragma once

#include <memory>

#include "native/native.h"

namespace quorvel::qt {

/// The desktop program's native side; one at a time. `program_name` is the name by which the
/// program was started; the toolkit sees no other argument of the command line. The toolkit's
/// dialogs keep no settings in the user's folders.
[[nodiscard]] std::unique_ptr<native::Side> MakeSide(const char* program_name);

}  // namespace quorvel::qt
