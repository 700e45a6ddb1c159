#pragma once

#include <QObject>
#include <QPointer>
#include <QTimer>
#include <vector>

#include "native/native.h"
#include "native/qt/event_loop.h"
#include "native/qt/frame.h"
#include "native/qt/menu_bar.h"

namespace quorvel::qt {

/// Makes the windows and keeps their menu bars alike. While no window is open, and the desktop has
/// no menu bar of its own, a small window shows the menu bar.
class Windows final : public QObject, public native::Windows, private native::WindowListener {
 public:
  /// `the_loop` outlives this object.
  explicit Windows(EventLoop& the_loop);
  ~Windows() override;
  [[nodiscard]] std::unique_ptr<native::Window> Create(native::WindowListener& listener) override;
  void ShowMenuBar(const std::vector<native::MenuEntry>& new_menus,
                   native::MenuListener& listener) override;
  void ForgetMenuBar() override;

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  // The listener of the small window: the user who closes the small window quits.
  void OnCloseRequested() override;
  void OnActivated() override {}
  void OnResized(int32_t, int32_t, bool) override {}
  void OnMouseMoved(native::Point) override {}
  void OnMousePressed(native::Point) override {}
  void OnMouseReleased(native::Point) override {}

  [[nodiscard]] Frame* MakeFrame(native::WindowListener& listener);
  void ShowMenusIn(Frame& frame);
  void NeedMenus();
  [[nodiscard]] bool TurnsFontSize(QObject* watched, QEvent* event);
  [[nodiscard]] bool AnyOpen() const;
  void KeepMenusInReach();
  void ShowSmallWindow();

  EventLoop& loop;
  std::vector<native::MenuEntry> menus;
  native::MenuListener* menu_listener = nullptr;
  std::vector<QPointer<Frame>> frames;
  std::unique_ptr<MenuBar> global_bar;
  std::unique_ptr<Frame> small_window;
  int wheel_turn = 0;  // eighths of a degree, with Control down, towards the next font shortcut
  QTimer menu_check;   // zero delay: runs KeepMenusInReach() after the current handler returns, so
                       // that closing a window and opening another does not flash the small window
};

}  // namespace quorvel::qt
