#include "native/qt/show_control.h"

#include "native/qt/accessible.h"
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

}  // namespace

void ShowControl(QWidget& widget, const native::ControlState& state, const QString& spoken) {
  widget.setObjectName(FromUtf8(state.Name));
  Name(widget, state.AccessibleName.empty() ? spoken : FromUtf8(state.AccessibleName));
  widget.setGeometry(state.Left, state.Top, state.Width, state.Height);
  ShowPointer(widget, state.FingerPointer);
  widget.setEnabled(state.Enabled);
  widget.setVisible(state.Visible);
  static_cast<Content*>(widget.parentWidget())->OrderSoon(widget, state.TabIndex);
}

}  // namespace quorvel::qt
