#include "native/text/stretches.h"

#include <algorithm>

#include "native/text/utf8.h"

namespace quorvel {

namespace {

constexpr size_t kNone = std::string_view::npos;
// How far before a cut a blank counts as near, in bytes.
constexpr size_t kNear = 256;

size_t RoundedUp(size_t position) { return (position + kStretch - 1) / kStretch * kStretch; }

// Whether a line end ends just before `position`, which is above 0.
bool IsLineStart(std::string_view text, size_t position) {
  const char before = text[position - 1];
  if (before == '\n') return true;
  return before == '\r' && (position == text.size() || text[position] != '\n');
}

// The last start of a line in (low, position], or kNone.
size_t LastLineStart(std::string_view text, size_t low, size_t position) {
  for (size_t at = position; at > low; --at) {
    if (IsLineStart(text, at)) return at;
  }
  return kNone;
}

// Long lines are cut near the multiples of kStretch at which the line is kStretch long or longer.
bool IsCut(std::string_view text, size_t multiple) {
  return multiple < text.size() && LastLineStart(text, multiple - kStretch, multiple) == kNone;
}

// Where exactly a line is cut that has a cut near `multiple`.
size_t CutNear(std::string_view text, size_t multiple) {
  const size_t blank = text.substr(multiple - kNear, kNear).find_last_of(" \t");
  if (blank != kNone) return multiple - kNear + blank + 1;
  return OutsideSequence(text, multiple);
}

size_t BeginOf(std::string_view text, size_t position) {
  const size_t above = RoundedUp(position + 1);
  if (above - position <= kNear && IsCut(text, above)) {
    const size_t cut = CutNear(text, above);
    if (cut <= position) return cut;
  }
  const size_t below = above - kStretch;
  size_t start = LastLineStart(text, below, position);
  if (start != kNone || below == 0) return start == kNone ? 0 : start;
  start = LastLineStart(text, below - kStretch, below);
  return start == kNone ? CutNear(text, below) : start;
}

// The end of the line that goes on at `begin`, when the end lies before `limit`, or kNone.
size_t LineEnd(std::string_view text, size_t begin, size_t limit) {
  const std::string_view part = text.substr(begin, limit - begin);
  const size_t feed = part.find('\n');
  const size_t carriage_return = part.substr(0, feed).find('\r');
  const size_t end = std::min(feed, carriage_return);
  return end == kNone ? kNone : begin + end;
}

}  // namespace

Stretch StretchAt(std::string_view text, size_t position) {
  if (text.empty()) return {};
  if (position >= text.size()) position = text.size() - 1;
  const size_t begin = BeginOf(text, position);
  const bool is_cut = begin > 0 && !IsLineStart(text, begin);
  const size_t limit =
      std::min(is_cut ? RoundedUp(begin) + kStretch : RoundedUp(begin + kStretch), text.size());
  const size_t end = LineEnd(text, begin, limit);
  if (end != kNone) return {begin, end, end + (text.substr(end, 2) == "\r\n" ? 2 : 1)};
  const size_t cut = limit < text.size() ? CutNear(text, limit) : limit;
  return {begin, cut, cut};
}

}  // namespace quorvel
