#pragma once

#include <QEvent>
#include <QWidget>

#include "native/native.h"

namespace quorvel::qt {

/// Sent to a content before it is painted at once: what waits to be shown is shown now.
constexpr QEvent::Type kShowWaiting = QEvent::User;

/// What a window shows below its menu bar: the parent of the controls. Reports the mouse, and
/// keeps the keyboard's order.
class Content final : public QWidget {
 public:
  Content(QWidget* parent, native::WindowListener& the_listener);

  /// Reports nothing from now on.
  void Forget() { listener = nullptr; }
  void ShowBackground(const native::WindowState& state);
  /// Takes in a control's widget. With `transparent`, the mouse over it is the content's business.
  void Add(QWidget& control, bool transparent);
  /// Puts the controls in their keyboard order when the current handler is done; the first time,
  /// one of them also gets the focus.
  void OrderSoon();
  /// Reports what a mouse that is clicked at `place` would.
  void Click(QPoint place);

 protected:
  void enterEvent(QEnterEvent* event) override;
  void leaveEvent(QEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  [[nodiscard]] native::Point Place(const QPointF& position) const;
  void TellMoved(native::Point place);
  void Order();

  native::WindowListener* listener;
  bool order_waits = false;
  bool focus_given = false;
};

}  // namespace quorvel::qt
