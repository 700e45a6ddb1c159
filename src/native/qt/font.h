#pragma once

#include <QFont>

#include "native/native.h"

namespace quorvel::qt {

/// The font of a control's text. A family that is not installed falls back to the desktop's sans
/// serif, serif or default font, whichever comes nearest.
[[nodiscard]] QFont FontOf(const native::TextState& state);
/// The font of a text on paper, replaced by the same rule.
[[nodiscard]] QFont PaperFontOf(const native::PrintFont& look);

}  // namespace quorvel::qt
