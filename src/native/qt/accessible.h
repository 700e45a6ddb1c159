#pragma once

#include <QAccessibleWidget>
#include <QWidget>

namespace quorvel::qt {

/// Gives the widget a name for screen readers, which are told of a new name alone. The widget gets
/// the name in the next turn of the event loop: the first word to screen readers connects to the
/// bus of the session, and the first window does not wait for the connection.
inline void Name(QWidget& widget, const QString& name) {
  const auto give = [&widget, name] {
    if (widget.accessibleName() != name) widget.setAccessibleName(name);
  };
  QMetaObject::invokeMethod(&widget, give, Qt::QueuedConnection);
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
