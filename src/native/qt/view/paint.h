#pragma once

#include <QFrame>
#include <QPainter>
#include <QPalette>

#include "native/qt/view/page.h"

namespace quorvel::qt {

/// Draws the rows of the page that meet `clip`, with the upper left corner of the page at `corner`.
void PaintRows(QPainter& painter, const Page& page, QPointF corner, const QRectF& clip,
               Range selected, const QPalette& palette);

/// Where the caret stands in the page, or an empty rectangle when its row is out of sight.
[[nodiscard]] QRectF CaretRectangle(const Page& page, size_t caret);

/// Draws a frame around a widget that has the keyboard. For each event of the widget, once the
/// widget has handled the event.
void ShowFocusFrame(QFrame& widget, const QEvent& event);

}  // namespace quorvel::qt
