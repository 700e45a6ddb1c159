#include "platform/windows/menu.h"

#include <algorithm>
#include <utility>

#include "native/native.h"
#include "platform/runtime/runtime.h"
#include "platform/values/exceptions.h"
#include "platform/windows/application.h"
#include "platform/windows/window.h"

namespace quorvel {

namespace {

native::MenuEntry EntryOf(const MenuItem& item) {
  native::MenuEntry entry{.Name = std::string(item.Name().Bytes()),
                          .Text = std::string(item.Text().Bytes()),
                          .KeyboardShortcut = std::string(item.KeyboardShortcut().Bytes()),
                          .Role = item._Role(),
                          .Enabled = item.Enabled(),
                          .Children = {}};
  for (const auto& child : item.Children()) entry.Children.push_back(EntryOf(*child));
  return entry;
}

}  // namespace

Ref<MenuItem> MenuItem::Child(const quorvel::Text& name) const {
  const auto found = std::ranges::find_if(
      mChildren, [&](const auto& child) { return StrComp(child->Name(), name, 0) == 0; });
  return found == mChildren.end() ? Nil : *found;
}

std::vector<Ref<MenuItem>> MenuItem::_Descendants() const {
  std::vector<Ref<MenuItem>> all;
  for (const auto& child : mChildren) {
    all.push_back(child);
    std::ranges::copy(child->_Descendants(), std::back_inserter(all));
  }
  return all;
}

Ref<MenuItem> MenuItem::_Lookup(const quorvel::Text& name) const {
  for (const auto& item : _Descendants()) {
    if (StrComp(item->Name(), name, 0) == 0) return item;
  }
  return Nil;
}

void MenuItem::_DisableEntirely() {
  mEnabled = false;
  for (const auto& child : mChildren) child->_DisableEntirely();
}

void QuitMenuItem::Event_Action() { Quit(0); }

void MenuBar::_DisableEntirely() {
  for (const auto& child : Children()) child->_DisableEntirely();
}

void MenuBar::_UpdateItems() {
  const auto items = _Descendants();
  _DisableEntirely();
  for (const auto& item : items) {
    if (item->AutoEnable() && (item->_HasOwnAction() || !item->Children().empty())) item->Enable();
  }
  if (const auto front = _WindowSupport::Front()) front->_EnableMenuItems(items);
  _TheApplication()->_EnableMenuItems(items);
}

void MenuBar::_ShowOnDesktop() { Native().Windows().ShowMenuBar(EntryOf(*this).Children, *this); }

void MenuBar::OnMenuNeeded() {
  Dispatch([self = Self(*this)] {
    self->_UpdateItems();
    self->_ShowOnDesktop();
  });
}

void MenuBar::OnMenuChosen(std::string_view name) {
  Dispatch([self = Self(*this), chosen = quorvel::Text::FromBytes(name)] {
    self->RouteIfEnabled(self->_Lookup(chosen));
  });
}

void MenuBar::OnShortcut(std::string_view shortcut) {
  Dispatch([self = Self(*this), pressed = quorvel::Text::FromBytes(shortcut)] {
    for (const auto& item : self->_Descendants()) {
      if (item->KeyboardShortcut() == pressed) return self->RouteIfEnabled(item);
    }
  });
}

void MenuBar::RouteIfEnabled(const Ref<MenuItem>& item) {
  _UpdateItems();
  if (item->Enabled()) Route(item->Name());
}

void MenuBar::Route(const quorvel::Text& name) {
  const auto front = _WindowSupport::Front();
  if (front && (front->_MenuHandlers().Run(name) || front->_HandleMenuCommand(name))) return;
  const auto app = _TheApplication();
  if (app->_MenuHandlers().Run(name) || app->_HandleMenuCommand(name)) return;
  _Lookup(name)->Event_Action();
}

void MenuHandlers::Add(const MenuItem& menu_bar, const Text& item_name, MenuHandler handler) {
  if (!menu_bar._Lookup(item_name)) {
    throw RuntimeException(Text("There is no such menu item: ") + item_name);
  }
  std::erase_if(mEntries,
                [&](const Entry& entry) { return StrComp(entry.name, item_name, 0) == 0; });
  mEntries.push_back({item_name, std::move(handler)});
}

const MenuHandlers::Entry* MenuHandlers::Find(const Text& item_name) const {
  const auto found = std::ranges::find_if(
      mEntries, [&](const Entry& entry) { return StrComp(entry.name, item_name, 0) == 0; });
  return found == mEntries.end() ? nullptr : &*found;
}

bool MenuHandlers::Run(const Text& item_name) const {
  const Entry* const entry = Find(item_name);
  if (entry == nullptr) return false;
  // The handler may close the window, and the window's end destroys the stored handler.
  const MenuHandler handler = entry->handler;
  handler();
  return true;
}

void MenuHandlers::EnableItems(const std::vector<Ref<MenuItem>>& items) const {
  for (const auto& item : items) {
    if (HasKey(item->Name())) item->Enable();
  }
}

}  // namespace quorvel
