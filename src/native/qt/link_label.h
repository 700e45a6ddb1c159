#pragma once

#include <QLabel>

#include "native/qt/content.h"

namespace quorvel::qt {

/// A label or a link. The keyboard reaches a link and clicks the link as the mouse does.
class LinkLabel final : public QLabel {
 public:
  explicit LinkLabel(Content& the_content);
  void SetLink(bool link);
  [[nodiscard]] bool IsLink() const { return focusPolicy() != Qt::NoFocus; }
  /// Reports a click in the middle of the label.
  void Press();

 protected:
  void keyPressEvent(QKeyEvent* event) override;
  void paintEvent(QPaintEvent* event) override;

 private:
  Content& content;  // the parent
};

}  // namespace quorvel::qt
