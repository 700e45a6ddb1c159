#pragma once

#include <QFont>

#include "native/native.h"

namespace quorvel::qt {

/// The font of a control's text. A family that is not installed falls back to the desktop's sans
/// serif, serif or default font, whichever comes nearest.
[[nodiscard]] QFont FontOf(const native::TextState& state);
/// The font of a text on paper, replaced by the same rule.
[[nodiscard]] QFont PaperFontOf(const native::PrintFont& look);

/// The font, or the largest smaller font in which `text` fits the room (in pixels) on the widget.
/// `flags` are those of alignment and wrapping. No font becomes smaller than can be read.
[[nodiscard]] QFont Fitting(const QFont& font, QWidget& widget, const QString& text, QSize room,
                            int flags = 0);

}  // namespace quorvel::qt
