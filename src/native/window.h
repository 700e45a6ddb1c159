#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "native/control.h"
#include "native/event_loop.h"
#include "native/menu.h"

namespace quorvel::native {

/// What a window shows. Sizes are those of the content below the menu bar, in logical pixels.
struct WindowState {
  std::string Title;           ///< empty: the desktop's choice
  std::string AccessibleName;  ///< spoken by a screen reader; empty for the title
  int32_t Width = 300;
  int32_t Height = 300;
  int32_t MinWidth = 64;  ///< the four limits bind the user alone, never the program
  int32_t MinHeight = 64;
  int32_t MaxWidth = 32000;
  int32_t MaxHeight = 32000;
  int32_t Placement = 0;  ///< 2: the window first comes up centred on the main screen; any other
                          ///< number: where the desktop puts the window
  bool Visible = true;
  bool Resizeable = true;  ///< whether the user can resize the window
  bool CloseButton = true;
  bool ClosesOnEscape = false;  ///< Escape, and the desktop's keys for closing a window, ask to
                                ///< close the window. Escape ends a search in a field first
  bool MinimizeButton = true;
  bool MaximizeButton = true;
  bool MenuBarVisible = true;  ///< of no effect where the desktop has one menu bar for all windows
  bool FullScreen = false;
  bool HasBackColor = false;  ///< whether the content is filled with `BackColor`
  std::string BackColor = "#ffffff";
};

/// A point in a window's content, in logical pixels. Outside of the content, both members are -1.
struct Point {
  int32_t x = -1;
  int32_t y = -1;
};

/// What the user does to a window. The listener outlives the window; the window may be gone when a
/// call returns.
class WindowListener {
 public:
  virtual ~WindowListener() = default;
  /// The user asks to close the window, which stays open unless the listener destroys the window.
  virtual void OnCloseRequested() = 0;
  /// The window has come to the front, by the user's hand or the program's.
  virtual void OnActivated() = 0;
  /// The user has given the content a new size. `dragging`: more sizes may follow at once; a call
  /// with `dragging` false ends each series. Never called for a size that the program gives.
  virtual void OnResized(int32_t width, int32_t height, bool dragging) = 0;
  /// The pointer moved over the content, a label or a canvas, entered another control, or left.
  virtual void OnMouseMoved(Point point) = 0;
  /// The main button went down over the content, a label or a canvas.
  virtual void OnMousePressed(Point point) = 0;
  /// The main button went up, wherever the pointer is by then. Follows each `OnMousePressed`.
  virtual void OnMouseReleased(Point point) = 0;
};

/// A window on the screen, from `Windows::Create` until its destruction. Hidden until an `Update`
/// with `Visible`.
class Window {
 public:
  virtual ~Window() = default;
  /// Shows the whole state; called when the window has got its properties, and after each change.
  virtual void Update(const WindowState& state) = 0;
  /// Makes the window visible, and brings the window to the front.
  virtual void Show() = 0;
  /// Draws the window before returning.
  virtual void Refresh() = 0;

  // Make a control that shows `state` from its first moment. The caller owns the control and
  // destroys the control before the window, or soon after.
  /// `listener` outlives the field.
  [[nodiscard]] virtual std::unique_ptr<TextField> AddTextField(const TextFieldState& state,
                                                                TextFieldListener& listener) = 0;
  [[nodiscard]] virtual std::unique_ptr<Label> AddLabel(const LabelState& state) = 0;
  /// Calls `pressed` for each press by mouse, Space or Return, until the button is destroyed.
  [[nodiscard]] virtual std::unique_ptr<Button> AddButton(const ButtonState& state,
                                                          Callback pressed) = 0;
  [[nodiscard]] virtual std::unique_ptr<Canvas> AddCanvas(const CanvasState& state) = 0;
};

/// Makes the windows, and shows the one menu bar: the desktop's own, or a copy in each window.
/// While no window is open, and the desktop has no menu bar of its own, a small window shows the
/// menu bar.
class Windows {
 public:
  virtual ~Windows() = default;
  /// A hidden window without controls. The caller owns the window; `listener` outlives the window.
  [[nodiscard]] virtual std::unique_ptr<Window> Create(WindowListener& listener) = 0;
  /// Shows the whole menu bar; called again after each change of an entry. `listener` outlives this
  /// object, or `ForgetMenuBar` comes first.
  virtual void ShowMenuBar(const std::vector<MenuEntry>& menus, MenuListener& listener) = 0;
  /// Empties the menu bar and drops its listener. Called once, after the event loop has ended.
  virtual void ForgetMenuBar() = 0;
};

}  // namespace quorvel::native
