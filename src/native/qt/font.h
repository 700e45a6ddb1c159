#pragma once

#include <QFont>

#include "native/native.h"

namespace quorvel::qt {

/// The font of a control's text. A family that is not installed falls back to the desktop's sans
/// serif, serif or default font, whichever comes nearest.
[[nodiscard]] QFont FontOf(const native::TextState& state);
/// The same on paper, where sizes are in points.
[[nodiscard]] QFont PaperFontOf(const native::TextState& state);

}  // namespace quorvel::qt
