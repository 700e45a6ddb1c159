#pragma once

#include <QPlainTextEdit>
#include <vector>

#include "native/following.h"

namespace quorvel::qt {

/// Where a long run of characters without a blank may be broken into lines. Wrapping takes the
/// toolkit time that grows with the square of such a run, so zero-width spaces go into the shown
/// text. Their positions are remembered, as the text may have zero-width spaces of its own.
class BreakMarks final {
 public:
  /// The shown form of a text that continues the texts before.
  [[nodiscard]] QString Put(const QString& text);
  /// The text behind `shown`, which begins at `start` of the whole shown text.
  [[nodiscard]] QString Without(const QString& shown, qsizetype start) const;

 private:
  std::vector<qsizetype> marks;
  qsizetype length = 0;  // of the whole shown text
  qsizetype run = 0;     // since the last blank or mark
};

/// The widget of a field of many lines. Follows the end of its text as `Following` says, shows a
/// frame while the widget has the keyboard, and aligns right-to-left lines to the right edge.
class TextView final : public QPlainTextEdit {
 public:
  explicit TextView(QWidget* parent);

  void ShowText(const QString& text);
  /// Undo never removes text that was added this way.
  void ShowAdded(const QString& text);
  /// The text without break marks.
  [[nodiscard]] QString Text() const;

  void FollowEnd(bool wanted);
  [[nodiscard]] bool KeepsEnd() const { return following.KeepsEnd(); }
  void ShowFocus(bool wanted) { shows_focus = wanted; }

 protected:
  [[nodiscard]] QMimeData* createMimeDataFromSelection() const override;
  bool event(QEvent* event) override;
  void wheelEvent(QWheelEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void timerEvent(QTimerEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;

 private:
  [[nodiscard]] QString TextIn(const QTextCursor& selection) const;
  void NoteUserScroll();
  void KeepEnd();
  void KeepEndAfterLayout();
  void PaintFocus();

  BreakMarks marks;
  native::Following following;
  bool shows_focus = false;
};

}  // namespace quorvel::qt
