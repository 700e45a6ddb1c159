#include "native/qt/modal.h"

#include <QApplication>

namespace quorvel::qt {

QWidget* DialogParent() {
  static QPointer<QWidget> last;
  if (QWidget* active = QApplication::activeWindow()) last = active;
  return last && last->isVisible() ? last : nullptr;
}

}  // namespace quorvel::qt
