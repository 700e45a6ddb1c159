#include "native/qt/print_layout.h"

#include <QPixmap>
#include <algorithm>

#include "native/qt/strings.h"
#include "native/text/utf8.h"

namespace quorvel::qt {

namespace {

// The most bytes of a paragraph that are laid out together: where a long word is broken, the cost
// of each line grows with the length laid out.
constexpr size_t kPiece = 2048;
constexpr qreal kTabInches = 80.0 / 72;

size_t LineEndLength(std::string_view text, size_t at) {
  const std::string_view rest = text.substr(at);
  if (rest.starts_with("\r\n")) return 2;
  if (rest.starts_with('\r') || rest.starts_with('\n')) return 1;
  return rest.starts_with("\u2028") || rest.starts_with("\u2029") ? 3 : 0;
}

/// The rest of a paragraph, or its first part.
struct Part {
  size_t length = 0;
  bool to_end = false;
};

Part NextPart(std::string_view text, size_t at, size_t most) {
  const size_t limit = at + std::min(most, text.size() - at);
  size_t end = at;
  while (end < limit && LineEndLength(text, end) == 0) ++end;
  const bool to_end = end == text.size() || LineEndLength(text, end) > 0;
  return {OutsideSequence(text, end) - at, to_end};
}

}  // namespace

// The toolkit multiplies the distance of tab stops by the resolution of the printer over that of
// the screen.
PrintLayout::PrintLayout(QPainter& the_painter, qreal scale, std::string_view the_text,
                         const QFont& font, int32_t the_width)
    : painter(the_painter),
      dots_per_unit(scale),
      text(the_text),
      width(std::max(the_width * scale, 1.0)),
      lines(QString(), font, painter.device()) {
  QTextOption option;
  option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
  option.setTabStopDistance(kTabInches * QPixmap(1, 1).logicalDpiX());
  lines.setTextOption(option);
  lines.setCacheEnabled(true);
}

// A first line that is higher than the block is drawn all the same, or the print would never end.
void PrintLayout::DrawBlock(int32_t x, int32_t y, int32_t height) {
  const QPointF corner = QPointF(x, y) * dots_per_unit;
  qreal used = 0;
  while (LineReady()) {
    const QTextLine line = lines.lineAt(next);
    if (used > 0 && used + line.height() > height * dots_per_unit) return;
    line.draw(&painter, corner + QPointF(0, used));
    used += line.height();
    ++next;
  }
}

bool PrintLayout::LineReady() {
  if (next == ready && at < text.size()) LayNext();
  return next < ready;
}

// The last line of a part may go on in the next part, and is laid out again there.
void PrintLayout::LayNext() {
  Part part;
  size_t most = kPiece;
  do {
    part = NextPart(text, at, most);
    Lay(std::string_view(text).substr(at, part.length));
    most *= 2;
  } while (!part.to_end && lines.lineCount() < 2);
  next = 0;
  ready = part.to_end ? lines.lineCount() : lines.lineCount() - 1;
  at += part.to_end ? part.length : BytesAbove(ready);
  if (part.to_end) at += LineEndLength(text, at);
  in_paragraph = !part.to_end;
}

size_t PrintLayout::BytesAbove(int line) const {
  return static_cast<size_t>(piece.left(lines.lineAt(line).textStart()).toUtf8().size());
}

// The writing direction of a paragraph is that of its first piece.
void PrintLayout::Lay(std::string_view part) {
  piece = FromUtf8(part);
  if (!in_paragraph) {
    QTextOption option = lines.textOption();
    const bool leftwards = piece.isRightToLeft();
    option.setTextDirection(leftwards ? Qt::RightToLeft : Qt::LeftToRight);
    option.setAlignment(leftwards ? Qt::AlignRight : Qt::AlignLeft);
    lines.setTextOption(option);
  }
  lines.setText(WithVisibleNulls(piece));
  lines.beginLayout();
  for (QTextLine line = lines.createLine(); line.isValid(); line = lines.createLine()) {
    line.setLineWidth(width);
    line.setPosition(QPointF());
  }
  lines.endLayout();
}

}  // namespace quorvel::qt
