#pragma once

#include <cstdint>

#include "platform/menu.h"
#include "platform/object.h"

namespace quorvel {

class RuntimeException;

/// Base of the application object. Its hooks are skipped unless a class overrides them.
class Application : public Object {
 public:
  [[nodiscard]] const Ref<quorvel::MenuBar>& MenuBar() const { return mMenuBar; }
  /// Shows the bar on the desktop from now on.
  void MenuBar(const Ref<quorvel::MenuBar>& menu_bar);

  void _AddMenuHandler(const Text& item_name, MenuHandler handler);
  [[nodiscard]] const MenuHandlers& _MenuHandlers() const { return mMenuHandlers; }
  void _EnableMenuItems(const std::vector<Ref<MenuItem>>& items);
  /// Sees commands that no handler took; true when it took one itself.
  [[nodiscard]] virtual bool _HandleMenuCommand(const Text& item_name);

  /// Waits up to `milliseconds` for an event, delivers what is there, returns. -1 waits for the
  /// default of 10 ms. Handlers run nested inside the call.
  void DoEvents(int32_t milliseconds);

  virtual void Event_Open() {}
  virtual void Event_Close() {}
  virtual void Event_EnableMenuItems() {}
  /// True when the exception has been dealt with and is not to be reported.
  [[nodiscard]] virtual bool Event_UnhandledException(const RuntimeException& exception);

 private:
  Ref<quorvel::MenuBar> mMenuBar;
  MenuHandlers mMenuHandlers;
};

}  // namespace quorvel
