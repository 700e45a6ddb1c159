#pragma once

#include <QAccessibleWidget>
#include <QWidget>

namespace quorvel::qt {

/// Gives the widget a name for screen readers, which are told of a new name alone.
inline void Name(QWidget& widget, const QString& name) {
  if (widget.accessibleName() != name) widget.setAccessibleName(name);
}

/// Gives all widgets of the class the role for screen readers. The toolkit takes the role once for
/// each application object.
template <class Widget, QAccessible::Role kRole>
void InstallRole() {
  QAccessible::installFactory([](const QString&, QObject* object) -> QAccessibleInterface* {
    auto* const widget = dynamic_cast<Widget*>(object);
    return widget != nullptr ? new QAccessibleWidget(widget, kRole) : nullptr;
  });
}

}  // namespace quorvel::qt
