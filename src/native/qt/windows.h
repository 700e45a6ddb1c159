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

/// Makes the windows and keeps their menu bars alike. While none is open, and the desktop has no
/// menu bar of its own, a small window with just the menu bar takes their place.
class Windows final : public QObject, public native::Windows, private native::WindowListener {
 public:
  /// `the_loop` outlives this object.
  explicit Windows(EventLoop& the_loop);
  ~Windows() override;
  [[nodiscard]] std::unique_ptr<native::Window> Create(native::WindowListener& listener) override;
  void ShowMenuBar(const std::vector<native::MenuEntry>& new_menus,
                   native::MenuListener& listener) override;

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  // The small window: to close it is to quit.
  void OnCloseRequested() override;
  void OnActivated() override {}
  void OnResized(int32_t, int32_t, bool) override {}
  void OnMouseMoved(native::Point) override {}
  void OnMousePressed(native::Point) override {}
  void OnMouseReleased(native::Point) override {}

  [[nodiscard]] Frame* MakeFrame(native::WindowListener& listener);
  void ShowMenusIn(Frame& frame);
  void NeedMenus();
  [[nodiscard]] bool AnyOpen() const;
  void KeepMenusInReach();
  void ShowSmallWindow();

  EventLoop& loop;
  std::vector<native::MenuEntry> menus;
  native::MenuListener* menu_listener = nullptr;
  std::vector<QPointer<Frame>> frames;
  std::unique_ptr<MenuBar> global_bar;
  std::unique_ptr<Frame> small_window;
  QTimer reach;  // runs out when the handler that opens and closes windows is done
};

}  // namespace quorvel::qt
