#pragma once

#include <QPoint>
#include <cstddef>
#include <vector>

#include "native/qt/view/rows.h"

namespace quorvel::qt {

/// The rows that a view of a text shows, and their scrolling. The text position of the top row
/// decides what is seen: wrapping anew, a larger font and added text keep the same words at the
/// top. x and y are logical pixels from the upper left corner of the view.
class Page {
 public:
  struct PlacedRow {
    Row row;
    qreal y;
  };

  explicit Page(Rows& of) : rows(of) {}

  void SetHeight(qreal the_height) { height = the_height; }
  /// Lays out the rows in sight after a change of the text, the look or the height. The end of the
  /// text comes into sight when `keeps_end` says so, and never stands above the lower edge when
  /// there is text to fill the view with.
  void Update(bool keeps_end);

  /// The rows in sight, at least in part, from the top. Never empty after the first `Update`.
  [[nodiscard]] const std::vector<PlacedRow>& Shown() const { return shown; }
  [[nodiscard]] bool BeginInSight() const;
  [[nodiscard]] bool EndInSight() const;
  /// The bytes of the rows in sight.
  [[nodiscard]] Range Bytes() const;
  [[nodiscard]] qreal Height() const { return height; }
  /// The height of the top row.
  [[nodiscard]] qreal RowHeight() const { return shown.front().row.Height(); }
  /// How far a page up or down goes: a row stays in sight.
  [[nodiscard]] qreal PageStep() const { return height - RowHeight(); }

  // Scrolling, as far as there is text.
  void ScrollBy(qreal down);
  void ScrollToBegin();
  void ScrollToEnd();
  /// Puts the row of the position at the top.
  void ScrollTo(size_t position);
  /// Scrolls as little as needed for the row of the position to be wholly in sight.
  void ScrollIntoSight(size_t position);
  /// Leaves a row in sight where the row is, and scrolls another row to the middle of the view.
  void ScrollToMiddle(size_t position);
  [[nodiscard]] bool IsInSight(size_t position) const;

  /// The position nearest to the point, which may lie outside of the view.
  [[nodiscard]] size_t PositionAt(QPointF point) const;
  /// The row in sight at the height `y`, or the nearest row in sight.
  [[nodiscard]] const PlacedRow& RowAt(qreal y) const;
  /// Null when the row of the position is out of sight.
  [[nodiscard]] const PlacedRow* RowOf(size_t position) const;

 private:
  void Place();
  void PlaceUpwards();
  [[nodiscard]] qreal HiddenAbove() const;

  Rows& rows;
  qreal height = 0;
  size_t top = 0;    // a position in the top row
  qreal offset = 0;  // of the top row; 0 or less
  std::vector<PlacedRow> shown;
};

}  // namespace quorvel::qt
