#include "native/qt/print_layout.h"

#include <algorithm>

#include "native/qt/strings.h"

namespace quorvel::qt {

namespace {

// Where a long word has to be broken, the cost of each line grows with what is laid out together.
constexpr size_t kPiece = 2048;
constexpr int kTabUnits = 80;

size_t LineEndLength(std::string_view text, size_t at) {
  const std::string_view rest = text.substr(at);
  if (rest.starts_with("\r\n")) return 2;
  if (rest.starts_with('\r') || rest.starts_with('\n')) return 1;
  return rest.starts_with("\u2028") || rest.starts_with("\u2029") ? 3 : 0;
}

bool InsideCharacter(std::string_view text, size_t at) {
  return at < text.size() && (static_cast<unsigned char>(text[at]) & 0xC0U) == 0x80;
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
  while (InsideCharacter(text, end)) --end;
  return {end - at, to_end};
}

}  // namespace

PrintLayout::PrintLayout(PrintJob& the_job, std::string_view the_text, const QFont& font,
                         qreal the_width)
    : job(the_job),
      text(the_text),
      width(std::max(the_width, 1.0)),
      lines(QString(), font, job.Painter().device()) {
  QTextOption option;
  option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
  option.setTabStopDistance(job.Dots(kTabUnits));
  lines.setTextOption(option);
  lines.setCacheEnabled(true);
}

bool PrintLayout::AtEnd() const { return job.Cancelled() || (next == ready && at == text.size()); }

// A line that is too high even for an empty block is drawn all the same, or it would never be.
void PrintLayout::DrawBlock(int32_t x, int32_t y, int32_t height) {
  const qreal top = job.Dots(y);
  qreal used = 0;
  while (!job.Cancelled() && LineReady()) {
    const QTextLine line = lines.lineAt(next);
    if (used > 0 && used + line.height() > job.Dots(height)) return;
    line.draw(&job.Painter(), QPointF(job.Dots(x), top + used));
    used += line.height();
    ++next;
  }
}

bool PrintLayout::LineReady() {
  if (next == ready && at < text.size()) LayNext();
  return next < ready;
}

// The last line of a part goes on in the next one, and is laid out again there.
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

// A paragraph runs the way it began.
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
