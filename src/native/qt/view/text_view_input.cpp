// What the user does with the keyboard, the mouse and the menu of a text view.

#include <QApplication>
#include <QContextMenuEvent>
#include <QKeyEvent>
#include <QMenu>
#include <algorithm>
#include <chrono>
#include <functional>
#include <memory>
#include <string>
#include <utility>

#include "native/qt/view/text_view.h"

namespace quorvel::qt {

namespace {

constexpr std::chrono::milliseconds kDragStep(50);
// A selection of up to this size is copied at once, so that a small piece on the clipboard does not
// keep a long text in memory.
constexpr size_t kSmallCopy = 65536;

Motion MotionOf(const QKeyEvent& event) {
  const bool far = (event.modifiers() & Qt::ControlModifier) != 0;
  switch (event.key()) {
    case Qt::Key_Left:
      return far ? Motion::PreviousWord : Motion::PreviousCharacter;
    case Qt::Key_Right:
      return far ? Motion::NextWord : Motion::NextCharacter;
    case Qt::Key_Up:
      return Motion::RowUp;
    case Qt::Key_Down:
      return Motion::RowDown;
    case Qt::Key_PageUp:
      return Motion::PageUp;
    case Qt::Key_PageDown:
      return Motion::PageDown;
    case Qt::Key_Home:
      return far ? Motion::TextBegin : Motion::RowBegin;
    case Qt::Key_End:
      return far ? Motion::TextEnd : Motion::RowEnd;
    default:
      return Motion::None;
  }
}

}  // namespace

// Whether the key stands for a command, which is run unless the question is `only_asked`.
bool TextView::RunCommand(const QKeyEvent& event, bool only_asked) {
  using Command = std::pair<QKeySequence::StandardKey, std::function<void()>>;
  const auto find_on = [this](FindStep step) {
    if (find == nullptr || !find->isVisible()) return OpenFind();
    find->Go(step);
  };
  const Command commands[] = {
      {QKeySequence::Copy, [&] { Copy(QClipboard::Clipboard); }},
      {QKeySequence::SelectAll,
       [&] {
         Select({0, rows.Text().size()});
       }},
      {QKeySequence::Find, [&] { OpenFind(); }},
      {QKeySequence::FindNext, [&] { find_on(FindStep::Next); }},
      {QKeySequence::FindPrevious, [&] { find_on(FindStep::Previous); }},
  };
  for (const auto& [key, run] : commands) {
    if (!event.matches(key)) continue;
    if (!only_asked) run();
    return true;
  }
  return false;
}

void TextView::keyPressEvent(QKeyEvent* event) {
  if (RunCommand(*event, false)) return;
  if (event->key() == Qt::Key_Escape && find != nullptr && find->isVisible()) return CloseFind();
  const Motion by = MotionOf(*event);
  if (by == Motion::None) return QAbstractScrollArea::keyPressEvent(event);
  Move(by, (event->modifiers() & Qt::ShiftModifier) != 0);
}

// A caret out of sight moves from the nearest row in sight on, unless the user extends a selection.
void TextView::Move(Motion by, bool extends) {
  BringUpToDate();
  if (!extends && !page.IsInSight(selection.caret)) {
    const bool above = selection.caret < page.Bytes().begin;
    selection.caret = page.PositionAt({0, above ? 0 : page.Height()});
  }
  const qreal page_step = page.PageStep();
  if (by == Motion::PageUp) page.ScrollBy(-page_step);
  if (by == Motion::PageDown) page.ScrollBy(page_step);
  const size_t caret = caret_motion.Moved(selection.caret, by, page_step);
  Select({extends ? selection.anchor : caret, caret});
  BringIntoSight(caret);
}

void TextView::wheelEvent(QWheelEvent* event) {
  BringUpToDate();
  const qreal notches = event->angleDelta().y() / qreal{QWheelEvent::DefaultDeltasPerStep};
  const qreal pixels = event->pixelDelta().y();
  const qreal rows_down = -notches * QApplication::wheelScrollLines();
  page.ScrollBy(pixels != 0 ? -pixels : rows_down * page.RowHeight());
  Scrolled();
  event->accept();
}

Range TextView::UnitUnder(QPointF point, SelectUnit unit) {
  BringUpToDate();
  return UnitAt(rows, page.PositionAt(point - PageCorner()), unit);
}

void TextView::Press(QPointF point, SelectUnit unit, bool extends) {
  drag_point = point;
  Select(drag.Press(UnitUnder(point, unit), unit, extends, selection));
}

void TextView::mousePressEvent(QMouseEvent* event) {
  if (event->button() != Qt::LeftButton) return;
  const bool third =
      since_double_click.isValid() &&
      !since_double_click.hasExpired(QApplication::doubleClickInterval()) &&
      (event->position() - drag_point).manhattanLength() < QApplication::startDragDistance();
  since_double_click.invalidate();
  Press(event->position(), third ? SelectUnit::Line : SelectUnit::Character,
        (event->modifiers() & Qt::ShiftModifier) != 0);
}

void TextView::mouseDoubleClickEvent(QMouseEvent* event) {
  if (event->button() != Qt::LeftButton) return;
  Press(event->position(), SelectUnit::Word, false);
  since_double_click.start();
}

void TextView::mouseMoveEvent(QMouseEvent* event) {
  if ((event->buttons() & Qt::LeftButton) == 0) return;
  DragTo(event->position());
  const bool outside = !viewport()->rect().contains(event->position().toPoint());
  if (outside && !drag_timer.isActive()) {
    drag_timer.start(static_cast<int>(kDragStep.count()), this);
  }
  if (!outside) drag_timer.stop();
}

// The further outside the pointer is, the faster the view scrolls.
void TextView::DragTo(QPointF point) {
  drag_point = point;
  const qreal above = std::min(point.y(), 0.0);
  const qreal below = std::max(point.y() - viewport()->height(), 0.0);
  if (above + below != 0) {
    BringUpToDate();
    page.ScrollBy(above + below);
    Scrolled();
  }
  Select(drag.DragTo(UnitUnder(point, drag.Unit())));
}

void TextView::mouseReleaseEvent(QMouseEvent* event) {
  if (event->button() != Qt::LeftButton) return;
  drag_timer.stop();
  Copy(QClipboard::Selection);
}

void TextView::contextMenuEvent(QContextMenuEvent* event) {
  auto* const menu = new QMenu(this);
  menu->setAttribute(Qt::WA_DeleteOnClose);
  menu->setFont(QApplication::font());
  menu->addAction("&Copy", QKeySequence::Copy, this, [this] { Copy(QClipboard::Clipboard); })
      ->setEnabled(!selection.Bytes().IsEmpty());
  menu->addAction("Select &All", QKeySequence::SelectAll, this, [this] {
    Select({0, rows.Text().size()});
  });
  menu->addSeparator();
  menu->addAction("&Find...", QKeySequence::Find, this, [this] { OpenFind(); });
  menu->popup(event->globalPos());
}

void TextView::Copy(QClipboard::Mode to) {
  const Range selected = selection.Bytes();
  QClipboard& clipboard = *QApplication::clipboard();
  if (selected.IsEmpty()) return;
  if (to == QClipboard::Selection && !clipboard.supportsSelection()) return;
  const std::string_view bytes = rows.Text().substr(selected.begin, selected.end - selected.begin);
  if (bytes.size() > kSmallCopy) {
    clipboard.setMimeData(new CopiedText(bytes, keeper()), to);
  } else {
    const auto copy = std::make_shared<std::string>(bytes);
    clipboard.setMimeData(new CopiedText(*copy, copy), to);
  }
}

}  // namespace quorvel::qt
