#include "native/qt/input_limit.h"

#include <algorithm>

namespace quorvel::qt {

namespace {

bool IsPair(const QString& text, qsizetype low) {
  return low > 0 && text[low].isLowSurrogate() && text[low - 1].isHighSurrogate();
}

qsizetype Characters(const QString& text) {
  qsizetype count = text.size();
  for (qsizetype i = 1; i < text.size(); ++i) count -= IsPair(text, i) ? 1 : 0;
  return count;
}

}  // namespace

void InputLimit::Put(const QString& text) { held = Characters(text); }

int InputLimit::Surplus(const QString& text, int cursor) {
  if (!Any()) return 0;
  const qsizetype now = Characters(text);
  const qsizetype allowed = std::max(most, held);
  held = std::min(now, allowed);
  int start = cursor;
  for (qsizetype excess = now - allowed; excess > 0 && start > 0; --excess) {
    start -= IsPair(text, start - 1) ? 2 : 1;
  }
  return cursor - start;
}

}  // namespace quorvel::qt
