#pragma once

#include <QWidget>
#include <functional>

#include "native/qt/view/finder.h"

class QCheckBox;
class QLabel;
class QLineEdit;

namespace quorvel::qt {

/// The line below a text in which the user types a text to find. Return and F3 go to the next hit,
/// with Shift to the hit before; Escape closes the line.
class FindLine final : public QWidget {
 public:
  using Search = std::function<FindResult(const QString& text, bool match_case, FindStep step)>;

  FindLine(QWidget* parent, Search the_search, std::function<void()> the_close);

  /// Takes the keyboard, with the former text selected; a `text` that is not empty replaces it.
  void Open(const QString& text);
  void Go(FindStep step);

 protected:
  void keyPressEvent(QKeyEvent* event) override;

 private:
  void Tell(const FindResult& result);

  Search search;
  std::function<void()> close_line;
  QLineEdit* entry;
  QCheckBox* match_case;
  QLabel* told;
};

}  // namespace quorvel::qt
