#pragma once

#include <string_view>

#include "platform/values/object.h"
#include "platform/windows/window.h"

namespace quorvel {

/// Base of the program's windows: the shared menu bar, and the bar's items by name.
///
/// The accessors of items and the overrides of `Event_EnableMenuItems` are there for completeness
/// of the product's own names. A new command needs neither: the enable pass enables every item for
/// which a handler is registered, so a row in ui/menu_bar.cpp and a handler are enough.
class AppWindow : public Window {
 public:
  [[nodiscard]] Ref<MenuItem> HelpMenu() const { return Item("HelpMenu"); }
  [[nodiscard]] Ref<AppleMenuItem> HelpAbout() const {
    return Cast<AppleMenuItem>(Item("HelpAbout"));
  }
  [[nodiscard]] Ref<MenuItem> HelpHelp() const { return Item("HelpHelp"); }
  [[nodiscard]] Ref<MenuItem> HelpKeyInformation() const { return Item("HelpKeyInformation"); }
  [[nodiscard]] Ref<MenuItem> FontMenu() const { return Item("FontMenu"); }
  [[nodiscard]] Ref<MenuItem> FontLarger() const { return Item("FontLarger"); }
  [[nodiscard]] Ref<MenuItem> FontSmaller() const { return Item("FontSmaller"); }
  [[nodiscard]] Ref<MenuItem> FileMenu() const { return Item("FileMenu"); }
  [[nodiscard]] Ref<QuitMenuItem> FileQuit() const { return Cast<QuitMenuItem>(Item("FileQuit")); }
  [[nodiscard]] Ref<MenuItem> FilePrint() const { return Item("FilePrint"); }
  [[nodiscard]] Ref<MenuItem> FileSave() const { return Item("FileSave"); }

 protected:
  /// For the `Layout` of each window: sets the shared menu bar, then the window's own table.
  void LayOut(PropertySet properties);

 private:
  [[nodiscard]] Ref<MenuItem> Item(const char* name) const { return MenuBar()->_Lookup(name); }
};

/// The window's control with the name `name`, or Nil. Raises `IllegalCastException` when the
/// control is no `Kind`.
template <class Kind>
[[nodiscard]] Ref<Kind> ControlOf(const Window& window, std::string_view name) {
  return Cast<Kind>(RuntimeWindowControlByName(window, name));
}

}  // namespace quorvel
