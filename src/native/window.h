#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "native/control.h"
#include "native/event_loop.h"
#include "native/menu.h"

namespace quorvel::native {

struct WindowState {
  std::string Title;
  int32_t Width = 300;
  int32_t Height = 300;
  int32_t MinWidth = 64;
  int32_t MinHeight = 64;
  int32_t MaxWidth = 32000;
  int32_t MaxHeight = 32000;
  int32_t Placement = 0;  ///< 0: the desktop's choice; 2: centred on the main screen
  int32_t Frame = 0;
  int32_t MacProcID = 0;
  bool Visible = true;
  bool Resizeable = true;
  bool CloseButton = true;
  bool MinimizeButton = true;
  bool MaximizeButton = true;
  bool MenuBarVisible = true;
  bool FullScreen = false;
  bool LiveResize = true;
  bool Composite = false;
  bool HasBackColor = false;
  std::string BackColor = "#ffffff";
};

/// A place in a window's content. Outside of the window, both are -1.
struct Point {
  int32_t x = -1;
  int32_t y = -1;
};

class WindowListener {
 public:
  virtual ~WindowListener() = default;
  virtual void OnCloseRequested() = 0;
  virtual void OnActivated() = 0;
  /// The user gave the content a new size; `dragging` while it may still change.
  virtual void OnResized(int32_t width, int32_t height, bool dragging) = 0;
  virtual void OnMouseMoved(Point place) = 0;
  virtual void OnMousePressed(Point place) = 0;
  virtual void OnMouseReleased(Point place) = 0;
};

class Window {
 public:
  virtual ~Window() = default;
  virtual void Update(const WindowState& state) = 0;
  /// Visible, and in front of the others.
  virtual void Show() = 0;
  virtual void Refresh() = 0;
  [[nodiscard]] virtual std::unique_ptr<TextField> AddTextField(TextFieldListener& listener) = 0;
  [[nodiscard]] virtual std::unique_ptr<Control> AddLabel() = 0;
  [[nodiscard]] virtual std::unique_ptr<Control> AddButton(Callback pressed) = 0;
  [[nodiscard]] virtual std::unique_ptr<Control> AddCanvas() = 0;
};

/// Makes and shows windows, and the one menu bar: the desktop's own, or a copy in each window.
class Windows {
 public:
  virtual ~Windows() = default;
  [[nodiscard]] virtual std::unique_ptr<Window> Create(WindowListener& listener) = 0;
  /// The whole menu bar, and again after each change. `listener` outlives this object.
  virtual void ShowMenuBar(const std::vector<MenuEntry>& menus, MenuListener& listener) = 0;
};

}  // namespace quorvel::native
