#pragma once

#include <QFont>
#include <QPainter>
#include <QTextLayout>
#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

namespace quorvel::qt {

/// How a text is laid out.
struct Look {
  QFont font;
  qreal width = 0;    ///< of a row, in logical pixels; rows do not wrap when `wraps` is false
  bool wraps = true;  ///< at the last blank that fits, or else anywhere
  bool operator==(const Look&) const = default;
};

/// Byte offsets into the text: the bytes from `begin` to before `end`.
struct Range {
  size_t begin = 0;
  size_t end = 0;
  [[nodiscard]] bool IsEmpty() const { return begin >= end; }
  bool operator==(const Range&) const = default;
};

/// The text that stands for `bytes` on the screen. A byte that is no part of a well-formed UTF-8
/// sequence is read as ISO 8859-1, and a symbol stands for a control character other than tab and
/// LF. `offsets` gets the byte offset of each UTF-16 unit and of the end, and stays empty when
/// every byte is one unit.
[[nodiscard]] QString ShownText(std::string_view bytes, std::vector<uint32_t>& offsets);

/// Some rows of a stretch, laid out together by the toolkit. Positions are byte offsets into the
/// whole text; x and y are logical pixels from the upper left corner of the piece.
class Piece {
 public:
  /// Lays out `bytes`, which stand at `begin` in the text. When the bytes go on behind `bytes`
  /// (`to_end` is false), the last row is not complete, and is left out.
  Piece(std::string_view bytes, size_t begin, bool to_end, const Look& look,
        Qt::LayoutDirection direction);

  /// 0 when the bytes were too few to fill a row, and go on.
  [[nodiscard]] int RowCount() const { return rows; }
  /// The bytes of a row, with the blank at which the row was wrapped.
  [[nodiscard]] Range RowBytes(int row) const;
  [[nodiscard]] qreal RowTop(int row) const { return layout.lineAt(row).y(); }
  [[nodiscard]] qreal RowHeight(int row) const;
  /// The width of the text in a row.
  [[nodiscard]] qreal RowWidth(int row) const { return layout.lineAt(row).naturalTextWidth(); }
  /// The position in the row that is nearest to `x`.
  [[nodiscard]] size_t PositionAt(int row, qreal x) const;
  [[nodiscard]] qreal XOf(int row, size_t position) const;

  /// A step over a character as the reader sees characters, or over a word; `position` itself at
  /// the end or the begin of the piece.
  [[nodiscard]] size_t Next(size_t position, QTextLayout::CursorMode by) const;
  [[nodiscard]] size_t Previous(size_t position, QTextLayout::CursorMode by) const;
  /// The word, or the run of blanks or of signs, at the position.
  [[nodiscard]] Range WordAt(size_t position) const;

  /// Draws the rows that meet `clip` with the upper left corner of the piece at `corner`, in the
  /// colours of `palette`.
  void Draw(QPainter& painter, QPointF corner, const QRectF& clip, Range selected,
            const QPalette& palette) const;

 private:
  void LayOut(const Look& look, Qt::LayoutDirection direction);
  [[nodiscard]] size_t ByteOf(int unit) const;
  [[nodiscard]] int UnitOf(size_t position) const;

  size_t start;
  size_t length;
  std::vector<uint32_t> offsets;
  QTextLayout layout;
  int rows = 0;
};

}  // namespace quorvel::qt
