#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string_view>
#include <vector>

#include "native/qt/view/piece.h"
#include "native/text/stretches.h"

namespace quorvel::qt {

/// A stretch whose rows are laid out from the begin as far as somebody has asked for rows.
struct LaidStretch {
  Stretch stretch;
  Qt::LayoutDirection direction = Qt::LeftToRight;
  std::vector<std::unique_ptr<const Piece>> pieces;
  struct RowOfPiece {
    const Piece* piece;
    int row;
  };
  std::vector<RowOfPiece> rows;
  size_t laid_to = 0;      ///< the position of the first byte that is not laid out
  bool complete = false;   ///< whether all rows are laid out
  uint32_t last_used = 0;  ///< for the owner
};

/// A row of text on the screen. Keeps the layout of its stretch alive.
class Row {
 public:
  Row(std::shared_ptr<LaidStretch> of, size_t the_index) : laid(std::move(of)), index(the_index) {}

  /// The bytes that the row shows, with the blank at which the row was wrapped, without a line end.
  [[nodiscard]] Range Bytes() const { return At().piece->RowBytes(At().row); }
  [[nodiscard]] const quorvel::Stretch& Stretch() const { return laid->stretch; }
  /// The last position at which a caret is shown in this row.
  [[nodiscard]] size_t EndOfCaret() const;
  /// Where the next row begins: behind the line end, when the row is the last row of a line.
  [[nodiscard]] size_t Next() const;
  [[nodiscard]] qreal Height() const { return At().piece->RowHeight(At().row); }
  [[nodiscard]] qreal Width() const { return At().piece->RowWidth(At().row); }
  [[nodiscard]] size_t PositionAt(qreal x) const { return At().piece->PositionAt(At().row, x); }
  /// A position behind the row counts as the end of the row.
  [[nodiscard]] qreal XOf(size_t position) const;
  /// The piece that the row belongs to, and the top of the row in the piece.
  [[nodiscard]] const Piece& Of() const { return *At().piece; }
  [[nodiscard]] qreal TopInPiece() const { return At().piece->RowTop(At().row); }

 private:
  friend class Rows;
  [[nodiscard]] const LaidStretch::RowOfPiece& At() const { return laid->rows[index]; }

  std::shared_ptr<LaidStretch> laid;
  size_t index;
};

/// The rows of a text, laid out where somebody looks at the rows. The cost of each call depends on
/// the rows that the call passes, never on the length of the text or of a line.
class Rows {
 public:
  /// The bytes of `text` stay as they are until the next call. The first `kept` bytes are the same
  /// as before.
  void SetText(std::string_view text, size_t kept);
  void SetLook(const Look& look);
  [[nodiscard]] std::string_view Text() const { return text; }

  /// The row that holds the position; the last row for the end of the text.
  [[nodiscard]] Row At(size_t position);
  /// Nothing behind the last row, and before the first row.
  [[nodiscard]] std::optional<Row> After(const Row& row);
  [[nodiscard]] std::optional<Row> Before(const Row& row);
  /// Forgets the layouts that nobody has asked for since the call before the last call.
  void EndFrame();

 private:
  std::shared_ptr<LaidStretch> LaidAt(size_t position);
  void AddPiece(LaidStretch& laid);

  std::string_view text;
  Look look;
  std::map<size_t, std::shared_ptr<LaidStretch>> cache;  // by the begins of the stretches
  uint32_t frame = 0;
};

}  // namespace quorvel::qt
