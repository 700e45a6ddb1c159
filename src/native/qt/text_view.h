#pragma once

#include <QPlainTextEdit>

#include "native/qt/break_marks.h"

namespace quorvel::qt {

/// The widget of a text field of many lines. While it is read-only, it stays quick however long the
/// words are, and what is copied from it is the text, without what was put in to be quick.
class TextView final : public QPlainTextEdit {
 public:
  explicit TextView(QWidget* parent) : QPlainTextEdit(parent) {}

  void ShowText(const QString& text);
  void ShowAdded(const QString& text);
  /// The text as far as `end`, a place in what is shown.
  [[nodiscard]] QString TextBefore(int end) const;
  [[nodiscard]] QString Text() const;

 protected:
  [[nodiscard]] QMimeData* createMimeDataFromSelection() const override;

 private:
  [[nodiscard]] QString TextIn(const QTextCursor& selection) const;

  BreakMarks marks;
};

}  // namespace quorvel::qt
