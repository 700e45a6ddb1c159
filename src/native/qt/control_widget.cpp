#include "native/qt/control_widget.h"

#include "native/qt/font.h"
#include "native/qt/keyboard_order.h"
#include "native/qt/strings.h"

namespace quorvel::qt {

namespace {

void ShowPointer(QWidget& widget, bool finger) {
  if (finger) {
    widget.setCursor(Qt::PointingHandCursor);
  } else if (widget.cursor().shape() == Qt::PointingHandCursor) {
    widget.unsetCursor();
  }
}

// What screen readers say of the control.
QString SpokenName(const native::ControlState& state) {
  return FromUtf8(state.AccessibleName.empty() ? state.Caption : state.AccessibleName);
}

}  // namespace

void ShowControl(QWidget& widget, const native::ControlState& state) {
  widget.setObjectName(FromUtf8(state.Name));
  widget.setAccessibleName(SpokenName(state));
  widget.setGeometry(state.Left, state.Top, state.Width, state.Height);
  widget.setFont(FontOf(state));
  widget.setAttribute(Qt::WA_MacShowFocusRect, state.UseFocusRing);
  ShowPointer(widget, state.FingerPointer);
  SetTabIndex(widget, state.TabIndex);
  widget.setEnabled(state.Enabled);
  widget.setVisible(state.Visible);
  static_cast<Content*>(widget.parentWidget())->OrderSoon();
}

}  // namespace quorvel::qt
