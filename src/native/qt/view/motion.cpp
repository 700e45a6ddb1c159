#include "native/qt/view/motion.h"

namespace quorvel::qt {

size_t CaretMotion::Moved(size_t from, Motion motion, qreal page_step) {
  switch (motion) {
    case Motion::None:
      return from;
    case Motion::NextCharacter:
      return NextStop(from, QTextLayout::SkipCharacters);
    case Motion::PreviousCharacter:
      return PreviousStop(from, QTextLayout::SkipCharacters);
    case Motion::NextWord:
      return NextStop(from, QTextLayout::SkipWords);
    case Motion::PreviousWord:
      return PreviousStop(from, QTextLayout::SkipWords);
    case Motion::RowBegin:
      return rows.At(from).Bytes().begin;
    case Motion::RowEnd:
      return rows.At(from).EndOfCaret();
    case Motion::RowUp:
      return PassRows(from, 1, false);
    case Motion::RowDown:
      return PassRows(from, 1, true);
    case Motion::PageUp:
      return PassRows(from, page_step, false);
    case Motion::PageDown:
      return PassRows(from, page_step, true);
    case Motion::TextBegin:
      return 0;
    case Motion::TextEnd:
      return rows.Text().size();
  }
  return from;
}

size_t CaretMotion::NextStop(size_t from, QTextLayout::CursorMode by) {
  const Row row = rows.At(from);
  const size_t next = row.Of().Next(from, by);
  if (next > from && next <= row.Stretch().end) return next;
  return from < row.Next() ? row.Next() : rows.Text().size();
}

size_t CaretMotion::PreviousStop(size_t from, QTextLayout::CursorMode by) {
  const Row row = rows.At(from);
  if (from > row.Stretch().end) return row.Stretch().end;
  if (from > row.Bytes().begin) return row.Of().Previous(from, by);
  const auto before = rows.Before(row);
  if (!before) return from;
  const size_t end = before->Bytes().end;
  return end < from ? end : before->Of().Previous(from, by);
}

// Passes one row at least.
size_t CaretMotion::PassRows(size_t from, qreal distance, bool down) {
  Row row = rows.At(from);
  if (goal_x < 0 || goal_position != from) goal_x = row.XOf(from);
  for (qreal passed = 0; passed < distance;) {
    const auto next = down ? rows.After(row) : rows.Before(row);
    if (!next) break;
    passed += next->Height();
    if (passed > distance && distance > 1) break;
    row = *next;
  }
  goal_position = row.PositionAt(goal_x);
  return goal_position;
}

}  // namespace quorvel::qt
