#include "native/qt/view/paint.h"

#include <QEvent>

namespace quorvel::qt {

void PaintRows(QPainter& painter, const Page& page, QPointF corner, const QRectF& clip,
               Range selected, const QPalette& palette) {
  painter.setPen(palette.color(QPalette::Text));
  const Piece* drawn = nullptr;
  for (const Page::PlacedRow& placed : page.Shown()) {
    const Piece& piece = placed.row.Of();
    if (&piece == drawn) continue;
    drawn = &piece;
    const QPointF piece_corner = corner + QPointF(0, placed.y - placed.row.TopInPiece());
    piece.Draw(painter, piece_corner, clip, selected, palette);
  }
}

QRectF CaretRectangle(const Page& page, size_t caret) {
  const Page::PlacedRow* const placed = page.RowOf(caret);
  if (placed == nullptr) return {};
  return {placed->row.XOf(caret), placed->y, 1, placed->row.Height()};
}

void ShowFocusFrame(QFrame& widget, const QEvent& event) {
  if (event.type() == QEvent::FocusIn || event.type() == QEvent::FocusOut) widget.update();
  if (event.type() != QEvent::Paint || !widget.hasFocus()) return;
  QPainter painter(&widget);
  painter.setPen(QPen(widget.palette().color(QPalette::Highlight), 2 * widget.frameWidth()));
  painter.drawRect(widget.rect());
}

}  // namespace quorvel::qt
