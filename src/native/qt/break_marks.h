#pragma once

#include <QString>
#include <vector>

namespace quorvel::qt {

/// Where a long run of characters without a blank may be broken. Wrapping takes the toolkit time
/// that grows with the square of such a run, so zero-width spaces are put into what is shown. They
/// are told from those of the text by their places.
class BreakMarks final {
 public:
  /// What is to be shown for a text that goes on from those before.
  [[nodiscard]] QString Put(const QString& text);
  /// The text of `shown`, which begins at `start` in all that is shown.
  [[nodiscard]] QString Without(const QString& shown, qsizetype start) const;

 private:
  std::vector<qsizetype> marks;
  qsizetype length = 0;  // of all that is shown
  qsizetype run = 0;     // of that, since the last blank or mark
};

}  // namespace quorvel::qt
