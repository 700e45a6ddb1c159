#include "native/qt/view/page.h"

#include <algorithm>
#include <limits>

namespace quorvel::qt {

void Page::Update(bool keeps_end) {
  if (keeps_end) {
    PlaceUpwards();
  } else {
    Place();
  }
  rows.EndFrame();
}

// Places rows from the top row on. Where the text ends above the lower edge of the view and another
// row has room at the top, the text moves down.
void Page::Place() {
  top = std::min(top, rows.Text().size());
  shown.clear();
  std::optional<Row> row = rows.At(top);
  offset = std::max(offset, 1 - row->Height());
  qreal y = offset;
  for (; row && y < height; row = rows.After(*row)) {
    shown.push_back({*row, y});
    y += row->Height();
  }
  if (HiddenAbove() <= height - y) PlaceUpwards();
}

// The height of the next row or part of a row that would come into sight at the top.
qreal Page::HiddenAbove() const {
  if (offset < 0) return -offset;
  const auto before = rows.Before(shown.front().row);
  return before ? before->Height() : std::numeric_limits<qreal>::infinity();
}

// Places as many whole rows as there is room for, up to the end of the text.
void Page::PlaceUpwards() {
  shown.clear();
  qreal y = height;
  std::optional<Row> row = rows.At(rows.Text().size());
  do {
    y -= row->Height();
    shown.push_back({*row, y});
    row = rows.Before(*row);
  } while (row && row->Height() <= y);
  std::ranges::reverse(shown);
  for (PlacedRow& placed : shown) placed.y -= std::max(y, 0.0);
  top = shown.front().row.Bytes().begin;
  offset = shown.front().y;
}

bool Page::BeginInSight() const { return shown.front().row.Bytes().begin == 0 && offset >= 0; }

bool Page::EndInSight() const {
  const PlacedRow& last = shown.back();
  return last.row.Next() >= rows.Text().size() && last.y + last.row.Height() <= height + 0.5;
}

Range Page::Bytes() const { return {shown.front().row.Bytes().begin, shown.back().row.Next()}; }

void Page::ScrollBy(qreal down) {
  Row row = rows.At(top);
  offset -= down;
  while (offset + row.Height() <= 0) {
    const auto after = rows.After(row);
    if (!after) break;
    offset += row.Height();
    row = *after;
  }
  while (offset > 0) {
    const auto before = rows.Before(row);
    if (!before) break;
    row = *before;
    offset -= row.Height();
  }
  offset = std::min(offset, 0.0);
  top = row.Bytes().begin;
  Place();
}

void Page::ScrollToBegin() { ScrollTo(0); }

void Page::ScrollToEnd() { PlaceUpwards(); }

void Page::ScrollTo(size_t position) {
  top = rows.At(position).Bytes().begin;
  offset = 0;
  Place();
}

bool Page::IsInSight(size_t position) const {
  const PlacedRow* const row = RowOf(position);
  return row != nullptr && row->y >= -0.5 && row->y + row->row.Height() <= height + 0.5;
}

void Page::ScrollIntoSight(size_t position) {
  if (IsInSight(position)) return;
  const bool above = position < shown.front().row.Next();
  ScrollTo(position);
  if (above) return;
  const PlacedRow* const row = RowOf(position);
  if (row != nullptr) ScrollBy(row->y + row->row.Height() - height);
}

void Page::ScrollToMiddle(size_t position) {
  if (IsInSight(position)) return;
  ScrollTo(position);
  const PlacedRow* const row = RowOf(position);
  if (row != nullptr) ScrollBy(row->y - height / 2);
}

size_t Page::PositionAt(QPointF point) const { return RowAt(point.y()).row.PositionAt(point.x()); }

const Page::PlacedRow& Page::RowAt(qreal y) const {
  const auto below = std::ranges::find_if(shown, [&](const PlacedRow& row) { return row.y > y; });
  return below == shown.begin() ? *below : *std::prev(below);
}

const Page::PlacedRow* Page::RowOf(size_t position) const {
  const bool at_end = position >= rows.Text().size();
  const auto holds = [&](const PlacedRow& placed) {
    const Range bytes = placed.row.Bytes();
    const size_t next = placed.row.Next();
    return position >= bytes.begin && (position < next || (at_end && next >= position));
  };
  const auto found = std::ranges::find_if(shown, holds);
  return found == shown.end() ? nullptr : &*found;
}

}  // namespace quorvel::qt
