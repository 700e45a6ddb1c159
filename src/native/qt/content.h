#pragma once

#include <QEvent>
#include <QWidget>

#include "native/window.h"

namespace quorvel::qt {

/// The part of a window below the menu bar: the parent of the controls. Reports the mouse, and
/// keeps the keyboard's order.
class Content final : public QWidget {
 public:
  Content(QWidget* parent, native::WindowListener& the_listener);

  /// Reports nothing from now on.
  void Forget() { listener = nullptr; }
  void ShowBackground(const native::WindowState& state);
  /// Takes in a control's widget. `Mouse::Reported`: the content reports the mouse over the
  /// control.
  enum class Mouse : uint8_t { Reported, KeptByControl };
  void Add(QWidget& control, Mouse mouse);
  /// Gives the control its rank in the keyboard's order. After the current handler, the order is
  /// made anew; the first time, a control also gets the focus: a field to type in, a single line
  /// before many lines, else a control of another kind, links last.
  void OrderSoon(QWidget& control, int tab_index);
  /// Reports a press and a release of the mouse at `point`, in pixels from the top left.
  void Click(QPoint point);

 protected:
  void enterEvent(QEnterEvent* event) override;
  void leaveEvent(QEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  [[nodiscard]] native::Point PointAt(const QPointF& position) const;
  void TellMoved(native::Point point);
  void Order();

  native::WindowListener* listener;
  bool order_pending = false;
  bool focus_given = false;
};

}  // namespace quorvel::qt
