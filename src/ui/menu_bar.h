#pragma once

#include "platform/values/object.h"
#include "platform/windows/menu.h"

namespace quorvel {

namespace menu_bar {

/// The program's menu bar, shared by the application and all windows.
class MenuBar1 : public MenuBar {
 public:
  void Constructor();

 protected:
  /// Append the menus File, Font and Help.
  virtual void Untitled0();
  virtual void Untitled1();
  virtual void Untitled2();
};

}  // namespace menu_bar

/// The menu bar; made on first use, kept until the end of the process.
[[nodiscard]] Ref<menu_bar::MenuBar1> MenuBar1();
void _ReleaseMenuBar1();

/// The application's own items, found by name in the menu bar.
[[nodiscard]] Ref<AppleMenuItem> HelpAbout();
[[nodiscard]] Ref<MenuItem> HelpHelp();
[[nodiscard]] Ref<MenuItem> HelpKeyInformation();

}  // namespace quorvel
