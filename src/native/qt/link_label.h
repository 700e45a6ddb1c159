#pragma once

#include <QLabel>

#include "native/qt/content.h"

namespace quorvel::qt {

/// A label that can be a link: then the keyboard reaches it, and presses it like the mouse.
class LinkLabel final : public QLabel {
 public:
  explicit LinkLabel(Content& the_content);
  void SetLink(bool link);
  [[nodiscard]] bool IsLink() const { return focusPolicy() != Qt::NoFocus; }
  /// A click in its middle.
  void Press();

 protected:
  void keyPressEvent(QKeyEvent* event) override;
  void paintEvent(QPaintEvent* event) override;

 private:
  Content& content;  // its parent
};

}  // namespace quorvel::qt
