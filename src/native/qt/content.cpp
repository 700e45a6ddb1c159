#include "native/qt/content.h"

#include <QEnterEvent>
#include <QMouseEvent>
#include <QPointer>

#include "native/qt/keyboard_order.h"
#include "native/qt/strings.h"

namespace quorvel::qt {

Content::Content(QWidget* parent, native::WindowListener& the_listener)
    : QWidget(parent), listener(&the_listener) {
  setMouseTracking(true);
}

void Content::ShowBackground(const native::WindowState& state) {
  QPalette colors;
  if (state.HasBackColor) {
    colors.setColor(QPalette::Window, QColor(FromUtf8(state.BackColor)));
    colors.setColor(QPalette::WindowText, Qt::black);
  }
  setPalette(colors);
  setAutoFillBackground(state.HasBackColor);
}

void Content::Add(QWidget& control, bool transparent) {
  control.setMouseTracking(transparent);
  control.installEventFilter(this);
}

void Content::OrderSoon() {
  if (order_waits) return;
  order_waits = true;
  QMetaObject::invokeMethod(
      this, [this] { Order(); }, Qt::QueuedConnection);
}

void Content::Order() {
  order_waits = false;
  const std::vector<QWidget*> controls = InKeyboardOrder(*this);
  ApplyTabOrder(controls);
  QWidget* first = FirstFocus(controls);
  if (focus_given || first == nullptr) return;
  first->setFocus(Qt::OtherFocusReason);
  focus_given = true;
}

void Content::Click(QPoint place) {
  const QPointer<Content> self(this);
  if (listener != nullptr) listener->OnMousePressed({place.x(), place.y()});
  if (self && listener != nullptr) listener->OnMouseReleased({place.x(), place.y()});
}

native::Point Content::Place(const QPointF& position) const {
  const QPoint place = position.toPoint();
  return rect().contains(place) ? native::Point{place.x(), place.y()} : native::Point{};
}

void Content::TellMoved(native::Point place) {
  if (listener != nullptr) listener->OnMouseMoved(place);
}

void Content::enterEvent(QEnterEvent* event) { TellMoved(Place(event->position())); }
void Content::leaveEvent(QEvent*) { TellMoved({}); }
void Content::mouseMoveEvent(QMouseEvent* event) { TellMoved(Place(event->position())); }

void Content::mousePressEvent(QMouseEvent* event) {
  const bool left = event->button() == Qt::LeftButton;
  if (left && listener != nullptr) listener->OnMousePressed(Place(event->position()));
}

void Content::mouseReleaseEvent(QMouseEvent* event) {
  const bool left = event->button() == Qt::LeftButton;
  if (left && listener != nullptr) listener->OnMouseReleased(Place(event->position()));
}

// A control that keeps the mouse to itself still tells where the pointer went, or the place that
// was left for it would seem to be under the pointer.
bool Content::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::Enter) {
    const QPointF place = static_cast<QEnterEvent*>(event)->position();
    TellMoved(Place(static_cast<QWidget*>(watched)->mapTo(this, place)));
  }
  return false;
}

}  // namespace quorvel::qt
