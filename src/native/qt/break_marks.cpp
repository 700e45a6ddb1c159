#include "native/qt/break_marks.h"

#include <algorithm>

namespace quorvel::qt {

namespace {

constexpr qsizetype kLongRun = 1000;
constexpr QChar kMark(0x200B);
constexpr QChar kJoiner(0x200D);

bool EndsRun(QChar character) { return character.isSpace() || character == kMark; }

// Not inside of what is seen as one character.
bool MayBreak(const QString& text, qsizetype at) {
  const QChar next = text[at];
  if (next.isLowSurrogate() || next.isMark() || next == kJoiner) return false;
  return at == 0 || text[at - 1] != kJoiner;
}

}  // namespace

QString BreakMarks::Put(const QString& text) {
  QString shown;
  qsizetype done = 0;
  for (qsizetype i = 0; i < text.size(); ++i) {
    if (EndsRun(text[i])) {
      run = 0;
    } else if (++run > kLongRun && MayBreak(text, i)) {
      shown += text.sliced(done, i - done);
      marks.push_back(length + shown.size());
      shown += kMark;
      done = i;
      run = 1;
    }
  }
  shown += text.sliced(done);
  length += shown.size();
  return shown;
}

QString BreakMarks::Without(const QString& shown, qsizetype start) const {
  QString text;
  qsizetype done = 0;
  for (auto mark = std::ranges::lower_bound(marks, start); mark != marks.end(); ++mark) {
    const qsizetype at = *mark - start;
    if (at >= shown.size()) break;
    text += shown.sliced(done, at - done);
    done = at + 1;
  }
  return text + shown.sliced(done);
}

}  // namespace quorvel::qt
