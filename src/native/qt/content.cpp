#include "native/qt/content.h"

#include <QEnterEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMouseEvent>
#include <QPlainTextEdit>
#include <QPointer>
#include <QVariant>
#include <algorithm>
#include <vector>

#include "native/qt/strings.h"

namespace quorvel::qt {

namespace {

constexpr const char* kTabIndex = "TabIndex";

int TabIndex(const QWidget* control) { return control->property(kTabIndex).toInt(); }

std::vector<QWidget*> InKeyboardOrder(const QWidget& content) {
  const auto found = content.findChildren<QWidget*>(QString(), Qt::FindDirectChildrenOnly);
  std::vector<QWidget*> controls(found.begin(), found.end());
  std::ranges::stable_sort(controls, {}, TabIndex);
  return controls;
}

bool TakesKeyboard(const QWidget* control) {
  return (control->focusPolicy() & Qt::TabFocus) != 0 && control->isEnabled() &&
         control->isVisibleTo(control->parentWidget());
}

// The control with the lowest rank gets the first focus.
int FocusRank(const QWidget* control) {
  const auto* line = qobject_cast<const QLineEdit*>(control);
  if (line != nullptr && !line->isReadOnly()) return 0;
  const auto* area = qobject_cast<const QPlainTextEdit*>(control);
  if (area != nullptr && !area->isReadOnly()) return 1;
  return qobject_cast<const QLabel*>(control) == nullptr ? 2 : 3;
}

// Null when no control takes the keyboard.
QWidget* FirstFocus(const std::vector<QWidget*>& controls) {
  std::vector<QWidget*> takers;
  std::ranges::copy_if(controls, std::back_inserter(takers), TakesKeyboard);
  const auto first = std::ranges::min_element(takers, {}, FocusRank);
  return first == takers.end() ? nullptr : *first;
}

}  // namespace

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

void Content::Add(QWidget& control, Mouse mouse) {
  control.setMouseTracking(mouse == Mouse::Reported);
  control.installEventFilter(this);
}

void Content::OrderSoon(QWidget& control, int tab_index) {
  control.setProperty(kTabIndex, tab_index);
  if (order_pending) return;
  order_pending = true;
  QMetaObject::invokeMethod(
      this, [this] { Order(); }, Qt::QueuedConnection);
}

void Content::Order() {
  order_pending = false;
  const std::vector<QWidget*> controls = InKeyboardOrder(*this);
  for (size_t i = 1; i < controls.size(); ++i) setTabOrder(controls[i - 1], controls[i]);
  QWidget* first = FirstFocus(controls);
  if (focus_given || first == nullptr) return;
  first->setFocus(Qt::OtherFocusReason);
  focus_given = true;
}

void Content::Click(QPoint point) {
  const QPointer<Content> self(this);
  if (listener != nullptr) listener->OnMousePressed({point.x(), point.y()});
  if (self && listener != nullptr) listener->OnMouseReleased({point.x(), point.y()});
}

native::Point Content::PointAt(const QPointF& position) const {
  const QPoint point = position.toPoint();
  return rect().contains(point) ? native::Point{point.x(), point.y()} : native::Point{};
}

void Content::TellMoved(native::Point point) {
  if (listener != nullptr) listener->OnMouseMoved(point);
}

void Content::enterEvent(QEnterEvent* event) { TellMoved(PointAt(event->position())); }
void Content::leaveEvent(QEvent*) { TellMoved({}); }
void Content::mouseMoveEvent(QMouseEvent* event) { TellMoved(PointAt(event->position())); }

void Content::mousePressEvent(QMouseEvent* event) {
  const bool left = event->button() == Qt::LeftButton;
  if (left && listener != nullptr) listener->OnMousePressed(PointAt(event->position()));
}

void Content::mouseReleaseEvent(QMouseEvent* event) {
  const bool left = event->button() == Qt::LeftButton;
  if (left && listener != nullptr) listener->OnMouseReleased(PointAt(event->position()));
}

// Buttons and fields keep mouse moves to themselves. Reports the pointer on entering a button or
// field; otherwise a label that the pointer has just left would never get "MouseExit".
bool Content::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::Enter) {
    const QPointF position = static_cast<QEnterEvent*>(event)->position();
    TellMoved(PointAt(static_cast<QWidget*>(watched)->mapTo(this, position)));
  }
  return false;
}

}  // namespace quorvel::qt
