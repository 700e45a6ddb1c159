#pragma once

#include <QAccessibleWidget>

#include "native/qt/view/text_view.h"

namespace quorvel::qt {

/// What a screen reader gets of a text view: the text around the rows in sight, up to some tens of
/// KiB on either side, so that no question walks through a long text. Offsets count UTF-16 units
/// from the begin of that part.
class AccessibleView final : public QAccessibleWidget, public QAccessibleTextInterface {
 public:
  /// Makes the accessible interfaces of text views known to the toolkit, which takes them once for
  /// each application object.
  static void Install();

  explicit AccessibleView(TextView& of);

  [[nodiscard]] QAccessible::State state() const override;
  void* interface_cast(QAccessible::InterfaceType type) override;

  void selection(int index, int* start, int* end) const override;
  [[nodiscard]] int selectionCount() const override;
  void addSelection(int start, int end) override;
  void removeSelection(int index) override;
  void setSelection(int index, int start, int end) override;
  [[nodiscard]] int cursorPosition() const override;
  void setCursorPosition(int position) override;
  using QAccessibleWidget::text;
  [[nodiscard]] QString text(int start, int end) const override;
  [[nodiscard]] int characterCount() const override;
  [[nodiscard]] QRect characterRect(int offset) const override;
  [[nodiscard]] int offsetAtPoint(const QPoint& point) const override;
  void scrollToSubstring(int start, int end) override;
  [[nodiscard]] QString attributes(int offset, int* start, int* end) const override;

 private:
  /// The part of the text that the screen reader gets.
  struct Part {
    Range bytes;
    QString shown;
    std::vector<uint32_t> offsets;
  };

  [[nodiscard]] const Part& Current() const;
  [[nodiscard]] int OffsetOf(size_t position) const;
  [[nodiscard]] size_t PositionOf(int offset) const;

  TextView& view;
  mutable Part part;
};

}  // namespace quorvel::qt
