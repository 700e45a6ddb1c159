#pragma once

#include <QAccessible>
#include <QTimer>
#include <QWidget>
#include <algorithm>
#include <cstddef>
#include <functional>
#include <string_view>

namespace quorvel::qt {

/// Tells screen readers what is added to the text of a view, at most a few times a second, and
/// where the caret is. Costs nothing while no screen reader runs.
class Announcer {
 public:
  /// `of` outlives the announcer; `text_of_view` gives the text that the view shows.
  Announcer(QWidget& of, std::function<std::string_view()> text_of_view);
  /// The text has changed behind its first `kept` bytes.
  void NoteChange(size_t kept) { told_to = std::min(told_to, kept); }
  /// Tells what is new: the begin of another text, or the end of what was added.
  void Tell();
  /// Tells that the user has put the caret elsewhere.
  void TellCaret();

 private:
  [[nodiscard]] const QAccessibleTextInterface& Accessible() const;

  QWidget& view;
  std::function<std::string_view()> text;
  size_t told_to = 0;
  QTimer pause;
};

}  // namespace quorvel::qt
