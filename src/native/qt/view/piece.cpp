#include "native/qt/view/piece.h"

#include <QPalette>
#include <QTextBoundaryFinder>
#include <algorithm>
#include <cmath>

#include "native/text/utf8.h"

namespace quorvel::qt {

namespace {

constexpr qreal kTabDistance = 80;
// The toolkit's layout has no lengths above 3e7.
constexpr qreal kUnlimited = 1e7;
// Where a row that is not complete cannot be drawn.
constexpr qreal kOutOfSight = 1e7;

char32_t ShownCharacter(const Utf8Character& character) {
  const auto code = static_cast<char32_t>(character.code);
  if (code < 0x20 && code != '\t' && code != '\n') return 0x2400 + code;
  if (code == 0x7F) return 0x2421;
  return code >= 0x80 && code < 0xA0 ? char32_t{QChar::ReplacementCharacter} : code;
}

bool IsPlain(std::string_view bytes) {
  return std::ranges::all_of(
      bytes, [](char byte) { return (byte >= ' ' && byte < 0x7F) || byte == '\t'; });
}

QTextOption OptionOf(const Look& look, Qt::LayoutDirection direction) {
  QTextOption option;
  option.setWrapMode(look.wraps ? QTextOption::WrapAtWordBoundaryOrAnywhere : QTextOption::NoWrap);
  option.setTabStopDistance(kTabDistance);
  option.setTextDirection(direction);
  const bool at_right = look.wraps && direction == Qt::RightToLeft;
  option.setAlignment(at_right ? Qt::AlignRight : Qt::AlignLeft);
  return option;
}

}  // namespace

QString ShownText(std::string_view bytes, std::vector<uint32_t>& offsets) {
  offsets.clear();
  if (IsPlain(bytes)) {
    return QString::fromLatin1(bytes.data(), static_cast<qsizetype>(bytes.size()));
  }
  QString shown;
  for (size_t at = 0; at < bytes.size();) {
    const Utf8Character character = DecodeUtf8(bytes.substr(at));
    shown += QChar::fromUcs4(ShownCharacter(character));
    offsets.resize(static_cast<size_t>(shown.size()), static_cast<uint32_t>(at));
    at += character.length;
  }
  offsets.push_back(static_cast<uint32_t>(bytes.size()));
  return shown;
}

Piece::Piece(std::string_view bytes, size_t begin, bool to_end, const Look& look,
             Qt::LayoutDirection direction)
    : start(begin), length(bytes.size()), layout(ShownText(bytes, offsets), look.font) {
  layout.setCacheEnabled(true);
  LayOut(look, direction);
  rows = layout.lineCount();
  if (!to_end) layout.lineAt(--rows).setPosition({0, kOutOfSight});
}

void Piece::LayOut(const Look& look, Qt::LayoutDirection direction) {
  layout.setTextOption(OptionOf(look, direction));
  layout.beginLayout();
  qreal y = 0;
  for (QTextLine line = layout.createLine(); line.isValid(); line = layout.createLine()) {
    line.setLineWidth(look.wraps ? look.width : kUnlimited);
    line.setPosition({0, y});
    y += std::ceil(line.height());
  }
  layout.endLayout();
}

size_t Piece::ByteOf(int unit) const {
  const auto index = static_cast<size_t>(unit);
  return start + (offsets.empty() ? index : offsets[std::min(index, offsets.size() - 1)]);
}

int Piece::UnitOf(size_t position) const {
  const size_t offset = std::clamp(position, start, start + length) - start;
  if (offsets.empty()) return static_cast<int>(offset);
  return static_cast<int>(std::ranges::lower_bound(offsets, offset) - offsets.begin());
}

Range Piece::RowBytes(int row) const {
  const QTextLine line = layout.lineAt(row);
  return {ByteOf(line.textStart()), ByteOf(line.textStart() + line.textLength())};
}

qreal Piece::RowHeight(int row) const { return std::ceil(layout.lineAt(row).height()); }

// The end of a wrapped row is the begin of the next row, so a point behind the row belongs to the
// last character of the row.
size_t Piece::PositionAt(int row, qreal x) const {
  const QTextLine line = layout.lineAt(row);
  int unit = line.xToCursor(x);
  const bool wrapped = row + 1 < layout.lineCount();
  if (wrapped && unit >= line.textStart() + line.textLength()) {
    unit = layout.previousCursorPosition(line.textStart() + line.textLength());
  }
  return ByteOf(unit);
}

qreal Piece::XOf(int row, size_t position) const {
  return layout.lineAt(row).cursorToX(UnitOf(position));
}

// The toolkit may stop between the two units of a character.
size_t Piece::Next(size_t position, QTextLayout::CursorMode by) const {
  int unit = UnitOf(position);
  while (unit < layout.text().size() && ByteOf(unit) <= position) {
    unit = layout.nextCursorPosition(unit, by);
  }
  return ByteOf(unit);
}

size_t Piece::Previous(size_t position, QTextLayout::CursorMode by) const {
  return ByteOf(layout.previousCursorPosition(UnitOf(position), by));
}

Range Piece::WordAt(size_t position) const {
  QTextBoundaryFinder words(QTextBoundaryFinder::Word, layout.text());
  words.setPosition(std::min<qsizetype>(UnitOf(position) + 1, layout.text().size()));
  const auto begin = words.toPreviousBoundary();
  const auto end = words.toNextBoundary();
  if (begin < 0 || end < 0) return {position, position};
  return {ByteOf(static_cast<int>(begin)), ByteOf(static_cast<int>(end))};
}

void Piece::Draw(QPainter& painter, QPointF corner, const QRectF& clip, Range selected,
                 const QPalette& palette) const {
  QList<QTextLayout::FormatRange> ranges;
  const int from = UnitOf(selected.begin);
  const int to = UnitOf(selected.end);
  if (from < to) {
    QTextCharFormat format;
    format.setBackground(palette.highlight());
    format.setForeground(palette.highlightedText());
    ranges.append({from, to - from, format});
  }
  layout.draw(&painter, corner, ranges, clip);
}

}  // namespace quorvel::qt
