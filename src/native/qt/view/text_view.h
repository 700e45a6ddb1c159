#pragma once

#include <QAbstractScrollArea>
#include <QBasicTimer>
#include <QClipboard>
#include <QElapsedTimer>
#include <functional>
#include <string_view>

#include "native/qt/view/announcer.h"
#include "native/qt/view/copied_text.h"
#include "native/qt/view/drag_selection.h"
#include "native/qt/view/find_line.h"
#include "native/qt/view/motion.h"
#include "native/qt/view/new_lines_mark.h"
#include "native/qt/view/page.h"
#include "native/qt/view/rows.h"
#include "native/text/following.h"

namespace quorvel::qt {

/// The widget of a text of any length that the user reads, selects, copies and searches. Paints
/// straight from the bytes of the text, and keeps no table of the text. A new text only marks the
/// view as out of date: the view is laid out and painted once a frame.
class TextView final : public QAbstractScrollArea {
 public:
  /// `keep` gives a keeper of the bytes that the view was told to show last.
  TextView(QWidget* parent, std::function<Keeper()> keep);

  /// The bytes stay as they are until the next call; any bytes are allowed. The first `kept` bytes
  /// are those of the former text. A text that only grows keeps the selection and the position.
  void ShowText(std::string_view text, size_t kept);
  /// Lays out and paints all that the view was told to show.
  void ShowNow();
  /// Wraps the rows at the width of the view, or lets a scroll bar move long rows.
  void SetWrapping(bool wanted);
  void FollowEnd(bool wanted);
  void ShowFocus(bool wanted) { shows_focus = wanted; }

  /// The text that the view was told to show last.
  [[nodiscard]] std::string_view Text() const { return rows.Text(); }
  [[nodiscard]] const Selection& Selected() const { return selection; }
  void Select(const Selection& selected);
  [[nodiscard]] const Page& CurrentPage();
  /// The upper left corner of the page in the viewport.
  [[nodiscard]] QPointF PageCorner() const;
  /// Scrolls, as the user does.
  void BringIntoSight(size_t position);

 protected:
  bool event(QEvent* event) override;
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void timerEvent(QTimerEvent* event) override;
  void wheelEvent(QWheelEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;
  void contextMenuEvent(QContextMenuEvent* event) override;
  void scrollContentsBy(int across, int down) override;

 private:
  void ChangeSoon();
  void LookChanged();
  void BringUpToDate();

  void UpdateBars();
  void OnBarAction(int action);
  void Scrolled();
  void GoToEnd();

  [[nodiscard]] bool RunCommand(const QKeyEvent& event, bool only_asked);
  void Move(Motion by, bool extends);
  void Copy(QClipboard::Mode to);

  [[nodiscard]] Range UnitUnder(QPointF point, SelectUnit unit);
  void Press(QPointF point, SelectUnit unit, bool extends);
  void DragTo(QPointF point);

  void OpenFind();
  void CloseFind();
  [[nodiscard]] FindResult Find(const QString& text, bool match_case, FindStep step);
  void PlaceParts();

  std::function<Keeper()> keeper;
  Rows rows;
  Page page{rows};
  bool out_of_date = true;
  bool wraps = true;
  bool shows_focus = false;
  native::Following following;
  bool follows = false;

  Selection selection;
  bool caret_shown = false;  // once the user has put the caret somewhere
  CaretMotion caret_motion{rows};
  DragSelection drag;
  QPointF drag_point;
  QBasicTimer drag_timer;  // scrolls while the pointer is outside of the view
  QElapsedTimer since_double_click;

  QBasicTimer frame_timer;
  QElapsedTimer since_frame;

  Announcer announcer;
  FindLine* find = nullptr;
  NewLinesMark* new_lines;
};

}  // namespace quorvel::qt
