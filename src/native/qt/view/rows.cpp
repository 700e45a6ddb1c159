#include "native/qt/view/rows.h"

#include <algorithm>

#include "native/text/utf8.h"

namespace quorvel::qt {

namespace {

// The most bytes that are laid out together: where a long word is broken, the toolkit's cost of
// each row grows with the length laid out.
constexpr size_t kPiece = 2048;

Qt::LayoutDirection DirectionOf(std::string_view line) {
  std::vector<uint32_t> offsets;
  const QString begin = ShownText(line.substr(0, kPiece), offsets);
  return !offsets.empty() && begin.isRightToLeft() ? Qt::RightToLeft : Qt::LeftToRight;
}

}  // namespace

size_t Row::Next() const {
  const bool is_last = laid->complete && index + 1 == laid->rows.size();
  return is_last ? laid->stretch.next : Bytes().end;
}

size_t Row::EndOfCaret() const {
  const Range bytes = Bytes();
  const bool wrapped = bytes.end < laid->stretch.next && Next() == bytes.end;
  return wrapped ? At().piece->Previous(bytes.end, QTextLayout::SkipCharacters) : bytes.end;
}

qreal Row::XOf(size_t position) const {
  const Range bytes = Bytes();
  return At().piece->XOf(At().row, std::clamp(position, bytes.begin, bytes.end));
}

// A stretch at the end of the old text may go on, or be cut elsewhere, in the new text.
void Rows::SetText(std::string_view the_text, size_t kept) {
  const size_t stays = kept == text.size() ? kept : 0;
  text = the_text;
  if (stays == 0) {
    cache.clear();
  } else if (!cache.empty() && cache.rbegin()->second->stretch.next == stays) {
    cache.erase(std::prev(cache.end()));
  }
}

void Rows::SetLook(const Look& the_look) {
  if (look == the_look) return;
  look = the_look;
  cache.clear();
}

std::shared_ptr<LaidStretch> Rows::LaidAt(size_t position) {
  auto found = cache.upper_bound(position);
  if (found != cache.begin()) {
    found = std::prev(found);
    const Stretch& stretch = found->second->stretch;
    const bool at_end = position == text.size() && stretch.next == text.size();
    if (position < stretch.next || at_end) {
      found->second->last_used = frame;
      return found->second;
    }
  }
  auto laid = std::make_shared<LaidStretch>();
  laid->stretch = StretchAt(text, position);
  const size_t begin = laid->stretch.begin;
  laid->direction = DirectionOf(text.substr(begin, laid->stretch.end - begin));
  laid->laid_to = begin;
  laid->last_used = frame;
  return cache[begin] = laid;
}

void Rows::AddPiece(LaidStretch& laid) {
  const std::string_view rest = text.substr(laid.laid_to, laid.stretch.end - laid.laid_to);
  std::unique_ptr<const Piece> piece;
  size_t most = look.wraps ? kPiece : rest.size();
  do {
    const bool to_end = rest.size() <= most;
    const size_t length = to_end ? rest.size() : OutsideSequence(rest, most);
    piece =
        std::make_unique<Piece>(rest.substr(0, length), laid.laid_to, to_end, look, laid.direction);
    laid.complete = to_end;
    most *= 2;
  } while (piece->RowCount() == 0);
  for (int row = 0; row < piece->RowCount(); ++row) laid.rows.push_back({piece.get(), row});
  laid.laid_to = piece->RowBytes(piece->RowCount() - 1).end;
  laid.pieces.push_back(std::move(piece));
}

Row Rows::At(size_t position) {
  const auto laid = LaidAt(position);
  while (!laid->complete && laid->laid_to <= position) AddPiece(*laid);
  const auto begins_at_most_there = [&](const LaidStretch::RowOfPiece& row) {
    return row.piece->RowBytes(row.row).begin <= position;
  };
  const auto behind = std::ranges::partition_point(laid->rows, begins_at_most_there);
  return {laid, static_cast<size_t>(behind - laid->rows.begin()) - 1};
}

std::optional<Row> Rows::After(const Row& row) {
  LaidStretch& laid = *row.laid;
  while (!laid.complete && row.index + 1 == laid.rows.size()) AddPiece(laid);
  if (row.index + 1 < laid.rows.size()) return Row(row.laid, row.index + 1);
  const size_t next = laid.stretch.next;
  return next < text.size() ? std::optional(At(next)) : std::nullopt;
}

std::optional<Row> Rows::Before(const Row& row) {
  if (row.index > 0) return Row(row.laid, row.index - 1);
  const size_t begin = row.Stretch().begin;
  if (begin == 0) return std::nullopt;
  const auto laid = LaidAt(begin - 1);
  while (!laid->complete) AddPiece(*laid);
  return Row(laid, laid->rows.size() - 1);
}

void Rows::EndFrame() {
  std::erase_if(cache, [&](const auto& entry) { return entry.second->last_used + 1 < frame; });
  ++frame;
}

}  // namespace quorvel::qt
