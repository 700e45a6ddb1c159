#pragma once

#include "native/qt/view/motion.h"

namespace quorvel::qt {

/// What one click selects, and what a drag adds to the selection at a time. A second click selects
/// words, a third selects lines.
enum class SelectUnit : uint8_t { Character, Word, Line };

/// The unit of text at the position. Of a very long line, a piece counts as the line.
[[nodiscard]] Range UnitAt(Rows& rows, size_t position, SelectUnit unit);

/// A selection that the mouse makes from the press of the button on.
class DragSelection {
 public:
  /// The button was pressed over `unit_there`; `extends` keeps the anchor of `before`.
  [[nodiscard]] Selection Press(Range unit_there, SelectUnit by, bool extends,
                                const Selection& before);
  /// The pointer is over `unit_there`, with the button down.
  [[nodiscard]] Selection DragTo(Range unit_there) const;
  [[nodiscard]] SelectUnit Unit() const { return unit; }

 private:
  SelectUnit unit = SelectUnit::Character;
  Range pressed;
};

}  // namespace quorvel::qt
