#include "native/qt/application.h"

namespace quorvel::qt {

bool Application::notify(QObject* receiver, QEvent* event) {
  ++depth;
  const bool handled = QApplication::notify(receiver, event);
  --depth;
  return handled;
}

}  // namespace quorvel::qt
