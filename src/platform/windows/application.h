#pragma once

#include "platform/runtime/runtime.h"
#include "platform/windows/menu.h"

namespace quorvel {

/// Base of the application object. Its hooks are skipped unless a class overrides them.
class Application : public RuntimeClient {
 public:
  [[nodiscard]] const Ref<quorvel::MenuBar>& MenuBar() const { return mMenuBar; }
  /// Shows the bar on the desktop from now on. Nil takes the bar off the desktop, which must happen
  /// before the last reference to the bar goes.
  void MenuBar(const Ref<quorvel::MenuBar>& menu_bar);

  /// Raises `RuntimeException` when no item of the menu bar has the name.
  void _AddMenuHandler(const Text& item_name, MenuHandler handler);
  [[nodiscard]] const MenuHandlers& _MenuHandlers() const { return mMenuHandlers; }
  void _EnableMenuItems(const std::vector<Ref<MenuItem>>& items);
  /// Sees commands that no handler took; true when it took one itself.
  [[nodiscard]] virtual bool _HandleMenuCommand(const Text& item_name);

  virtual void Event_Open() {}
  virtual void Event_Close() {}
  virtual void Event_EnableMenuItems() {}
  /// True when the exception has been dealt with and is not to be reported.
  [[nodiscard]] virtual bool Event_UnhandledException(const RuntimeException& exception);

  void _Open() override { Event_Open(); }
  void _End() override;
  [[nodiscard]] bool _Unhandled(const RuntimeException& exception) override {
    return Event_UnhandledException(exception);
  }

 private:
  Ref<quorvel::MenuBar> mMenuBar;
  MenuHandlers mMenuHandlers;
};

/// The registered application object, for windows and menus.
[[nodiscard]] Ref<Application> _TheApplication();

}  // namespace quorvel
