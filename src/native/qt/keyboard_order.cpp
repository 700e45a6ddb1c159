#include "native/qt/keyboard_order.h"

#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QVariant>
#include <algorithm>

namespace quorvel::qt {

namespace {

constexpr const char* kTabIndex = "TabIndex";

int TabIndex(const QWidget* control) { return control->property(kTabIndex).toInt(); }

bool TakesKeyboard(const QWidget* control) {
  return (control->focusPolicy() & Qt::TabFocus) != 0 && control->isEnabled() &&
         control->isVisibleTo(control->parentWidget());
}

// The lower, the sooner it gets the first focus.
int FocusRank(const QWidget* control) {
  const auto* line = qobject_cast<const QLineEdit*>(control);
  if (line != nullptr && !line->isReadOnly()) return 0;
  const auto* area = qobject_cast<const QPlainTextEdit*>(control);
  if (area != nullptr && !area->isReadOnly()) return 1;
  return qobject_cast<const QLabel*>(control) == nullptr ? 2 : 3;
}

}  // namespace

void SetTabIndex(QWidget& control, int index) { control.setProperty(kTabIndex, index); }

std::vector<QWidget*> InKeyboardOrder(const QWidget& content) {
  const auto found = content.findChildren<QWidget*>(QString(), Qt::FindDirectChildrenOnly);
  std::vector<QWidget*> controls(found.begin(), found.end());
  std::ranges::stable_sort(controls, {}, TabIndex);
  return controls;
}

void ApplyTabOrder(const std::vector<QWidget*>& controls) {
  for (size_t i = 1; i < controls.size(); ++i) QWidget::setTabOrder(controls[i - 1], controls[i]);
}

QWidget* FirstFocus(const std::vector<QWidget*>& controls) {
  std::vector<QWidget*> takers;
  std::ranges::copy_if(controls, std::back_inserter(takers), TakesKeyboard);
  const auto first = std::ranges::min_element(takers, {}, FocusRank);
  return first == takers.end() ? nullptr : *first;
}

}  // namespace quorvel::qt
