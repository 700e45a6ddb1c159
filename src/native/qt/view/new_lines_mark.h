#pragma once

#include <QPushButton>
#include <cstddef>
#include <string_view>

namespace quorvel::qt {

/// The button at the lower edge of a view that does not follow its end: tells how many lines have
/// come since, and leads to the end.
class NewLinesMark final : public QPushButton {
 public:
  explicit NewLinesMark(QWidget* viewport);

  /// Counts the lines of `text` behind those counted before, while the view is away from its end.
  void Count(std::string_view text, bool away);
  /// Moves to the lower right corner of the viewport. Does nothing while no lines are new: the size
  /// of the hidden mark would take a font that no other part of the first window needs.
  void MoveToCorner();

 private:
  size_t counted_to = 0;
  size_t lines = 0;
};

}  // namespace quorvel::qt
