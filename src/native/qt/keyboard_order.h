#pragma once

#include <QWidget>
#include <vector>

namespace quorvel::qt {

/// Gives a control its place in the keyboard's order.
void SetTabIndex(QWidget& control, int index);

/// The controls in `content`, by their tab index.
[[nodiscard]] std::vector<QWidget*> InKeyboardOrder(const QWidget& content);
void ApplyTabOrder(const std::vector<QWidget*>& controls);
/// Where the keyboard goes first: a field to type in, one of a single line if there is any, else
/// any control that takes the keyboard, links last; null if there is none.
[[nodiscard]] QWidget* FirstFocus(const std::vector<QWidget*>& controls);

}  // namespace quorvel::qt
