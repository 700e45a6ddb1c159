#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "native/window.h"
#include "platform/values/object.h"
#include "platform/values/text.h"
#include "platform/windows/controls.h"
#include "platform/windows/menu.h"
#include "platform/windows/properties.h"

namespace quorvel {

/// Base of the window classes. A class gives its tables in `Layout` and `CreateControls`, its
/// handlers in `AddMenuHandlers` and the hooks; hooks that it does not override are skipped.
///
/// Open from `Constructor` until `Close`; nothing of a closed window is used again.
class Window : public Object, private native::WindowListener {
 public:
  /// Lists the window, then runs `Layout`, `CreateControls`, `AddMenuHandlers`, shows the window,
  /// and fires Open. An exception before Open takes the half-made window away again.
  void Constructor();
  /// Makes the window visible and brings it to the front.
  void Show();
  void Close();
  /// Draws the window at once.
  void Refresh(bool erase_first);

  [[nodiscard]] Text Title() const;
  void Title(const Text& title);
  /// The size of the content in pixels; the menu bar is not counted.
  [[nodiscard]] int32_t Width() const { return mState.Width; }
  [[nodiscard]] int32_t Height() const { return mState.Height; }
  [[nodiscard]] const Ref<quorvel::MenuBar>& MenuBar() const { return mMenuBar; }
  void MenuBar(const Ref<quorvel::MenuBar>& menu_bar) { mMenuBar = menu_bar; }

  /// Raises `RuntimeException` when no item of the menu bar has the name.
  void _AddMenuHandler(const Text& item_name, MenuHandler handler);
  [[nodiscard]] const MenuHandlers& _MenuHandlers() const { return mMenuHandlers; }
  void _EnableMenuItems(const std::vector<Ref<MenuItem>>& items);
  /// Sees commands that no handler of the window took; true when it took one itself.
  [[nodiscard]] virtual bool _HandleMenuCommand(const Text& item_name);

  /// Adds a control, or another `_PaneChild`, under its name.
  void _AddControl(const Text& name, const Ref<Object>& object);
  [[nodiscard]] Ref<Object> _Control(std::string_view name) const {
    for (const auto& [control_name, control] : _mControls) {
      if (control_name.Bytes() == name) return control;
    }
    return Nil;
  }
  /// Allocates an object for the window's code, which then calls its constructor. The object's
  /// life does not depend on the window's.
  template <class T>
  [[nodiscard]] Ref<T> __New() {
    return New<T>();
  }

  /// Closes the window; false when `Event_CancelClose` kept the window open. A hook that raises
  /// keeps no step from being done: the exception is rethrown after the last step. A call inside
  /// the window's own Close hook changes nothing.
  bool _UnifiedClose(bool application_quits);
  void _AssignProperties(PropertySet properties);
  /// The class's full name, as "wMain.wMain".
  [[nodiscard]] virtual Text _ClassName() const = 0;

  virtual void Event_Open() {}
  virtual void Event_Close() {}
  [[nodiscard]] virtual bool Event_CancelClose(bool application_quits);
  virtual void Event_EnableMenuItems() {}
  /// The user has given the window a new size, or is about to.
  virtual void Event_Resized() {}
  virtual void Event_Resizing() {}

 protected:
  virtual void Layout() {}
  virtual void CreateControls() {}
  virtual void AddMenuHandlers() {}

  /// Makes a control (or timer) of class `T` in the window: created, added under its name, looked
  /// up by the name, set up from its table. The layout table comes last: the native counterpart is
  /// made with the table's values.
  template <class T>
  Ref<T> CreateControl(const Text& name, PropertySet properties) {
    Ref<T> created = __New<T>();
    created->Constructor();
    _AddControl(name, created);
    _SetProperties(_Control(name.Bytes()), properties);
    return created;
  }

 private:
  void OnCloseRequested() override;
  void OnActivated() override;
  void OnResized(int32_t width, int32_t height, bool dragging) override;
  void OnMouseMoved(native::Point point) override;
  void OnMousePressed(native::Point point) override;
  void OnMouseReleased(native::Point point) override;
  void TrackMouse(native::Point point);
  void Make();
  void ReleaseControls();
  void LeaveScreen();
  void UpdateNative();

  native::WindowState mState;
  std::unique_ptr<native::Window> mNative;
  Ref<quorvel::MenuBar> mMenuBar;
  std::vector<std::pair<Text, Ref<Object>>> _mControls;
  std::vector<Ref<Control>> _mControlList;
  MenuHandlers mMenuHandlers;
  /// The control whose "MouseDown" claimed the press under way.
  Ref<RectControl> mClickClaimedBy;
  /// The window stays hidden until its controls exist, so that nobody sees the window half made.
  bool _mInitialControlsCreated = false;
  bool mClosing = false;
};

/// Assigns every row of a layout table to the window, as for a control.
inline void _SetProperties(Window& window, PropertySet properties) {
  window._AssignProperties(properties);
}

/// The control or timer of that name in the window, or Nil.
[[nodiscard]] inline Ref<Object> RuntimeWindowControlByName(const Window& window,
                                                            std::string_view name) {
  return window._Control(name);
}

/// The open windows, the front one first.
namespace _WindowSupport {
[[nodiscard]] std::vector<Ref<Window>> Windows();
/// The front window, or Nil.
[[nodiscard]] Ref<Window> Front();
void Add(const Ref<Window>& window);
void BringToFront(const Window& window);
void Remove(const Window& window);
/// Empties the list at the end of the process.
void ReleaseAll();
}  // namespace _WindowSupport

namespace detail {
/// The first open window of each class, with the class's full name. The list is short.
inline std::vector<std::pair<std::string, Ref<Window>>> _mImplicitWindowList;
}  // namespace detail

/// The open window of the class with that full name, or Nil.
[[nodiscard]] inline Ref<Window> _GetImplicitWindow(std::string_view class_name) {
  for (const auto& [name, window] : detail::_mImplicitWindowList) {
    if (name == class_name) return window;
  }
  return Nil;
}

/// The one window of class `W`, made and opened if there is none.
template <class W>
Ref<W> ImplicitWindow() {
  if (auto open = _GetImplicitWindow(W::kClassName)) return Cast<W>(std::move(open));
  Ref<W> made = New<W>();
  made->Constructor();
  return made;
}

}  // namespace quorvel
