#pragma once

#include "platform/values/object.h"
#include "platform/windows/window.h"

namespace quorvel {

/// What the program's windows share: the one menu bar, and its items by name.
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
  /// The first half of every `Layout`: the shared menu bar, then the window's own table.
  void LayOut(PropertySet properties);

 private:
  [[nodiscard]] Ref<MenuItem> Item(const char* name) const { return MenuBar()->_Lookup(name); }
};

/// The control of that name in the window, as a `Kind`.
template <class Kind>
[[nodiscard]] Ref<Kind> ControlOf(const Window& window, const char* name) {
  return Cast<Kind>(RuntimeWindowControlByName(window, name));
}

}  // namespace quorvel
