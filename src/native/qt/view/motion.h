#pragma once

#include <cstddef>
#include <cstdint>

#include "native/qt/view/rows.h"

namespace quorvel::qt {

/// How the keyboard moves the caret.
enum class Motion : uint8_t {
  None,
  NextCharacter,
  PreviousCharacter,
  NextWord,
  PreviousWord,
  RowBegin,
  RowEnd,
  RowUp,
  RowDown,
  PageUp,
  PageDown,
  TextBegin,
  TextEnd,
};

/// The selected text, from the anchor to the caret, as byte offsets.
struct Selection {
  size_t anchor = 0;
  size_t caret = 0;
  [[nodiscard]] Range Bytes() const {
    return anchor < caret ? Range{anchor, caret} : Range{caret, anchor};
  }
};

/// Moves a caret through a text.
class CaretMotion {
 public:
  explicit CaretMotion(Rows& of) : rows(of) {}
  /// Where `motion` takes a caret at `from`; a page up or down is `page_step` logical pixels. Rows
  /// passed one after the other keep the x at which the first motion began.
  [[nodiscard]] size_t Moved(size_t from, Motion motion, qreal page_step);

 private:
  [[nodiscard]] size_t NextStop(size_t from, QTextLayout::CursorMode by);
  [[nodiscard]] size_t PreviousStop(size_t from, QTextLayout::CursorMode by);
  [[nodiscard]] size_t PassRows(size_t from, qreal distance, bool down);

  Rows& rows;
  qreal goal_x = -1;         // -1: the x of the caret
  size_t goal_position = 0;  // of the caret that goal_x belongs to
};

}  // namespace quorvel::qt
