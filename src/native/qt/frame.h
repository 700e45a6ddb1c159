#pragma once

#include <QTimer>
#include <QWidget>

#include "native/native.h"
#include "native/qt/content.h"
#include "native/qt/menu_bar.h"

namespace quorvel::qt {

/// A window of the desktop: a menu bar, unless the desktop has one for all windows, and below it a
/// content of just the size that was asked for.
class Frame final : public QWidget {
 public:
  /// `came_to_front` is called when the user comes to the window, after the listener.
  Frame(native::WindowListener& the_listener, native::Callback came_to_front);

  void Update(const native::WindowState& state);
  void ShowMenus(const std::vector<native::MenuEntry>& menus, native::MenuListener& menu_listener);
  void ComeToFront();
  void PaintNow();
  /// Hides the window, which calls its listener no more.
  void Forget();
  [[nodiscard]] Content& Inside() { return *content; }

 protected:
  void closeEvent(QCloseEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  bool event(QEvent* event) override;

 private:
  void ShowButtons(const native::WindowState& state);
  void ShowFullScreen(bool full_screen);
  void SetShown(bool shown);
  [[nodiscard]] int BarHeight(int width) const;
  [[nodiscard]] QSize Whole(QSize of_content) const;
  void Fit();
  void TakeSize(QSize whole);
  void FitLimits();
  void Arrange();
  void Place();
  void NoteSize();
  void TellSize(bool dragging);
  void TellFront();

  native::WindowListener* listener;
  native::Callback front;
  MenuBar* bar = nullptr;
  Content* content;
  QTimer settled;
  native::WindowState last;
  QSize content_size{last.Width, last.Height};  // as it is, or is to be
  Qt::WindowFlags flags;
  bool fitting = false;
  bool placed = false;
};

}  // namespace quorvel::qt
