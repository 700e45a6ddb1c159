#include "native/qt/view/drag_selection.h"

#include <algorithm>

namespace quorvel::qt {

Range UnitAt(Rows& rows, size_t position, SelectUnit unit) {
  if (unit == SelectUnit::Character) return {position, position};
  const Row row = rows.At(position);
  if (unit == SelectUnit::Word) return row.Of().WordAt(position);
  return {row.Stretch().begin, row.Stretch().next};
}

Selection DragSelection::Press(Range unit_there, SelectUnit by, bool extends,
                               const Selection& before) {
  unit = by;
  pressed = extends ? Range{before.anchor, before.anchor} : unit_there;
  return DragTo(unit_there);
}

Selection DragSelection::DragTo(Range unit_there) const {
  if (unit_there.begin < pressed.begin) return {pressed.end, unit_there.begin};
  return {pressed.begin, std::max(unit_there.end, pressed.end)};
}

}  // namespace quorvel::qt
