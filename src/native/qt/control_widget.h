#pragma once

#include "native/native.h"
#include "native/qt/content.h"

namespace quorvel::qt {

/// Shows the part of a state that is the same for controls of all kinds.
void ShowControl(QWidget& widget, const native::ControlState& state);

}  // namespace quorvel::qt
