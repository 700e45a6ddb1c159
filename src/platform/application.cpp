#include "platform/application.h"

#include <utility>

#include "platform/native.h"
#include "platform/runtime.h"

namespace quorvel {

namespace {
constexpr int32_t kDefaultWaitMs = 10;
}

void Application::MenuBar(const Ref<quorvel::MenuBar>& menu_bar) {
  mMenuBar = menu_bar;
  menu_bar->_ShowOnDesktop();
}

void Application::_AddMenuHandler(const Text& item_name, MenuHandler handler) {
  mMenuHandlers.Add(item_name, std::move(handler));
}

void Application::_EnableMenuItems(const std::vector<Ref<MenuItem>>& items) {
  Event_EnableMenuItems();
  mMenuHandlers.EnableItems(items);
}

bool Application::_HandleMenuCommand(const Text&) { return false; }

void Application::DoEvents(int32_t milliseconds) {
  Native().Loop().Turn(milliseconds < 0 ? kDefaultWaitMs : milliseconds);
  UnwindIfQuitting();
}

bool Application::Event_UnhandledException(const RuntimeException&) { return false; }

}  // namespace quorvel
