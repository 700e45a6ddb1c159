#pragma once

#include "native/control.h"
#include "native/qt/content.h"

namespace quorvel::qt {

/// Shows the members that controls of all kinds have. `spoken` is the text of the control, which a
/// screen reader says when the state has no `AccessibleName`.
void ShowControl(QWidget& widget, const native::ControlState& state, const QString& spoken);

}  // namespace quorvel::qt
