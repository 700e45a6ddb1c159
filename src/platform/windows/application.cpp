#include "platform/windows/application.h"

#include <utility>

#include "native/native.h"
#include "platform/windows/window.h"

namespace quorvel {

void Application::MenuBar(const Ref<quorvel::MenuBar>& menu_bar) {
  mMenuBar = menu_bar;
  if (menu_bar) {
    menu_bar->_ShowOnDesktop();
  } else {
    Native().Windows().ForgetMenuBar();
  }
}

void Application::_AddMenuHandler(const Text& item_name, MenuHandler handler) {
  mMenuHandlers.Add(*mMenuBar, item_name, std::move(handler));
}

void Application::_EnableMenuItems(const std::vector<Ref<MenuItem>>& items) {
  Event_EnableMenuItems();
  mMenuHandlers.EnableItems(items);
}

bool Application::_HandleMenuCommand(const Text&) { return false; }

void Application::_End() {
  for (const auto& window : _WindowSupport::Windows()) {
    RunAndReport([&] { window->_UnifiedClose(true); });
  }
  RunAndReport([this] { Event_Close(); });
}

bool Application::Event_UnhandledException(const RuntimeException&) { return false; }

Ref<Application> _TheApplication() { return Cast<Application>(_GetAppObject()); }

}  // namespace quorvel
