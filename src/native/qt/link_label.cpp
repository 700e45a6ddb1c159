#include "native/qt/link_label.h"

#include <QAccessibleWidget>
#include <QKeyEvent>
#include <QPainter>
#include <QStyleOptionFocusRect>

namespace quorvel::qt {

namespace {

/// A label as screen readers see the label.
class AccessibleLabel final : public QAccessibleWidget {
 public:
  explicit AccessibleLabel(LinkLabel& the_label) : QAccessibleWidget(&the_label) {}

  [[nodiscard]] QAccessible::Role role() const override {
    return Label().IsLink() ? QAccessible::Link : QAccessible::StaticText;
  }
  [[nodiscard]] QStringList actionNames() const override {
    QStringList names = QAccessibleWidget::actionNames();
    if (Label().IsLink()) names.prepend(pressAction());
    return names;
  }
  void doAction(const QString& action) override {
    if (Label().IsLink() && action == pressAction()) return Label().Press();
    QAccessibleWidget::doAction(action);
  }

 private:
  [[nodiscard]] LinkLabel& Label() const { return *static_cast<LinkLabel*>(object()); }
};

QAccessibleInterface* MakeAccessible(const QString&, QObject* object) {
  auto* label = dynamic_cast<LinkLabel*>(object);
  return label != nullptr ? new AccessibleLabel(*label) : nullptr;
}

}  // namespace

LinkLabel::LinkLabel(Content& the_content) : QLabel(&the_content), content(the_content) {
  QAccessible::installFactory(MakeAccessible);
  setTextFormat(Qt::PlainText);
  // A label with text to select or click keeps the mouse from the content. Without interaction the
  // content sees, and reports, the presses and releases.
  setTextInteractionFlags(Qt::NoTextInteraction);
}

void LinkLabel::SetLink(bool link) { setFocusPolicy(link ? Qt::TabFocus : Qt::NoFocus); }

void LinkLabel::Press() {
  if (isEnabled()) content.Click(geometry().center());
}

void LinkLabel::keyPressEvent(QKeyEvent* event) {
  const int key = event->key();
  const bool presses = key == Qt::Key_Return || key == Qt::Key_Enter || key == Qt::Key_Space;
  if (!IsLink() || !presses || event->isAutoRepeat()) return QLabel::keyPressEvent(event);
  Press();
}

void LinkLabel::paintEvent(QPaintEvent* event) {
  QLabel::paintEvent(event);
  if (!hasFocus()) return;
  QPainter painter(this);
  QStyleOptionFocusRect option;
  option.initFrom(this);
  style()->drawPrimitive(QStyle::PE_FrameFocusRect, &option, &painter, this);
}

}  // namespace quorvel::qt
