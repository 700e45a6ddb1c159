#include "native/qt/view/accessible_view.h"

#include <algorithm>

#include "native/text/stretches.h"

namespace quorvel::qt {

namespace {

// How far the accessible text reaches beyond the rows in sight, in bytes.
constexpr size_t kAround = 32768;

QAccessibleInterface* Make(const QString&, QObject* object) {
  auto* const view = dynamic_cast<TextView*>(object);
  return view == nullptr ? nullptr : new AccessibleView(*view);
}

}  // namespace

void AccessibleView::Install() { QAccessible::installFactory(Make); }

AccessibleView::AccessibleView(TextView& of)
    : QAccessibleWidget(&of, QAccessible::EditableText), view(of) {}

QAccessible::State AccessibleView::state() const {
  QAccessible::State state = QAccessibleWidget::state();
  state.readOnly = true;
  state.multiLine = true;
  state.selectableText = true;
  return state;
}

void* AccessibleView::interface_cast(QAccessible::InterfaceType type) {
  if (type == QAccessible::TextInterface) return static_cast<QAccessibleTextInterface*>(this);
  return QAccessibleWidget::interface_cast(type);
}

// The part stays the same while the rows in sight lie in the part, so that a screen reader's
// offsets stay good for a while.
const AccessibleView::Part& AccessibleView::Current() const {
  const std::string_view text = view.Text();
  const Range seen = view.CurrentPage().Bytes();
  const bool holds = part.bytes.begin <= seen.begin && seen.end <= part.bytes.end;
  const bool is_short = part.bytes.end - part.bytes.begin <= 4 * kAround;
  const size_t begin = seen.begin < kAround ? 0 : StretchAt(text, seen.begin - kAround).begin;
  const Range wanted{holds && is_short ? part.bytes.begin : begin,
                     std::min(seen.end + kAround, text.size())};
  if (wanted == part.bytes && holds) return part;
  part.bytes = wanted;
  part.shown = ShownText(text.substr(wanted.begin, wanted.end - wanted.begin), part.offsets);
  return part;
}

int AccessibleView::OffsetOf(size_t position) const {
  const Part& now = Current();
  const size_t byte = std::clamp(position, now.bytes.begin, now.bytes.end) - now.bytes.begin;
  if (now.offsets.empty()) return static_cast<int>(byte);
  return static_cast<int>(std::ranges::lower_bound(now.offsets, byte) - now.offsets.begin());
}

size_t AccessibleView::PositionOf(int offset) const {
  const Part& now = Current();
  const auto unit = static_cast<size_t>(std::clamp<qsizetype>(offset, 0, now.shown.size()));
  return now.bytes.begin + (now.offsets.empty() ? unit : now.offsets[unit]);
}

void AccessibleView::selection(int index, int* start, int* end) const {
  const Range selected = index == 0 ? view.Selected().Bytes() : Range();
  *start = OffsetOf(selected.begin);
  *end = OffsetOf(selected.end);
}

int AccessibleView::selectionCount() const { return view.Selected().Bytes().IsEmpty() ? 0 : 1; }

void AccessibleView::addSelection(int start, int end) { setSelection(0, start, end); }

void AccessibleView::removeSelection(int index) {
  if (index == 0) view.Select({view.Selected().caret, view.Selected().caret});
}

void AccessibleView::setSelection(int index, int start, int end) {
  if (index == 0) view.Select({PositionOf(start), PositionOf(end)});
}

int AccessibleView::cursorPosition() const { return OffsetOf(view.Selected().caret); }

void AccessibleView::setCursorPosition(int position) {
  const size_t caret = PositionOf(position);
  view.Select({caret, caret});
  view.BringIntoSight(caret);
}

QString AccessibleView::text(int start, int end) const {
  const qsizetype size = Current().shown.size();
  const qsizetype from = std::clamp<qsizetype>(start, 0, size);
  return part.shown.sliced(from, std::clamp<qsizetype>(end, from, size) - from);
}

int AccessibleView::characterCount() const { return static_cast<int>(Current().shown.size()); }

QRect AccessibleView::characterRect(int offset) const {
  const auto* const placed = view.CurrentPage().RowOf(PositionOf(offset));
  if (placed == nullptr) return {};
  const qreal left = placed->row.XOf(PositionOf(offset));
  const qreal right = placed->row.XOf(PositionOf(offset + 1));
  const QRectF rectangle(std::min(left, right), placed->y, std::abs(right - left),
                         placed->row.Height());
  const QRect inside = rectangle.translated(view.PageCorner()).toAlignedRect();
  return {view.viewport()->mapToGlobal(inside.topLeft()), inside.size()};
}

int AccessibleView::offsetAtPoint(const QPoint& point) const {
  const QPoint inside = view.viewport()->mapFromGlobal(point);
  if (!view.viewport()->rect().contains(inside)) return -1;
  return OffsetOf(view.CurrentPage().PositionAt(inside - view.PageCorner()));
}

void AccessibleView::scrollToSubstring(int start, int) { view.BringIntoSight(PositionOf(start)); }

QString AccessibleView::attributes(int, int* start, int* end) const {
  *start = 0;
  *end = characterCount();
  return {};
}

}  // namespace quorvel::qt
