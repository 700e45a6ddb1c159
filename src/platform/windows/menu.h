#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "native/menu.h"
#include "platform/values/object.h"
#include "platform/values/text.h"

namespace quorvel {

/// An item of a menu, or a menu with items. Items are found and routed by `Name`.
class MenuItem : public Object {
 public:
  void Constructor() {}

  [[nodiscard]] const quorvel::Text& Name() const { return mName; }
  void Name(const quorvel::Text& name) { mName = name; }
  [[nodiscard]] const quorvel::Text& Text() const { return mText; }
  void Text(const quorvel::Text& text) { mText = text; }
  /// A shortcut like "Cmd+S"; empty for an item without a shortcut.
  [[nodiscard]] const quorvel::Text& KeyboardShortcut() const { return mShortcut; }
  void KeyboardShortcut(const quorvel::Text& shortcut) { mShortcut = shortcut; }
  /// Whether the enable pass enables a menu, or an item with an action of its own, without a
  /// handler.
  [[nodiscard]] bool AutoEnable() const { return mAutoEnable; }
  void AutoEnable(bool on) { mAutoEnable = on; }
  [[nodiscard]] bool Enabled() const { return mEnabled; }
  void Enabled(bool on) { mEnabled = on; }
  void Enable() { mEnabled = true; }

  void Append(const Ref<MenuItem>& child) { mChildren.push_back(child); }
  [[nodiscard]] const std::vector<Ref<MenuItem>>& Children() const { return mChildren; }
  /// The direct child with the name `name`, or Nil.
  [[nodiscard]] Ref<MenuItem> Child(const quorvel::Text& name) const;
  /// The item with the name `name` anywhere below, or Nil.
  [[nodiscard]] Ref<MenuItem> _Lookup(const quorvel::Text& name) const;
  /// All items below, parents before their children.
  [[nodiscard]] std::vector<Ref<MenuItem>> _Descendants() const;
  /// Disables the item and all items below.
  virtual void _DisableEntirely();

  [[nodiscard]] virtual native::MenuRole _Role() const { return native::MenuRole::Plain; }
  [[nodiscard]] virtual bool _HasOwnAction() const { return false; }
  /// The item's own action, for a chosen item without a handler.
  virtual void Event_Action() {}

 private:
  quorvel::Text mName;
  quorvel::Text mText;
  quorvel::Text mShortcut;
  bool mAutoEnable = true;
  bool mEnabled = true;
  std::vector<Ref<MenuItem>> mChildren;
};

/// An item that the desktop may move to the application menu.
class AppleMenuItem : public MenuItem {
 public:
  [[nodiscard]] native::MenuRole _Role() const override { return native::MenuRole::About; }
};

/// An item with an action of its own: quitting the application.
class QuitMenuItem : public MenuItem {
 public:
  [[nodiscard]] native::MenuRole _Role() const override { return native::MenuRole::Quit; }
  [[nodiscard]] bool _HasOwnAction() const override { return true; }
  void Event_Action() override;
};

/// The root of the menu tree. Runs the enable pass before the user sees or chooses an item. Routes
/// a chosen item to the front window's handler, else to the application's handler, else to the
/// item's own action.
class MenuBar : public MenuItem, private native::MenuListener {
 public:
  /// Disables all items; the bar itself stays enabled.
  void _DisableEntirely() override;
  /// The enable pass: disables all items, then enables menus, items with an action of their own,
  /// and items for which the front window or the application has a handler or enables in
  /// `Event_EnableMenuItems`.
  void _UpdateItems();
  /// Hands the desktop a copy of the menus.
  void _ShowOnDesktop();

 private:
  void OnMenuNeeded() override;
  void OnMenuChosen(std::string_view name) override;
  void OnShortcut(std::string_view shortcut) override;
  void RouteIfEnabled(const Ref<MenuItem>& item);
  void Route(const quorvel::Text& name);
};

/// A command's handler. The result has no effect: a command is routed to one handler at most.
using MenuHandler = std::function<bool()>;

/// The handlers of a window or of the application, by item name.
class MenuHandlers {
 public:
  /// Registers the handler, instead of an earlier handler of the same name. Raises
  /// `RuntimeException` when no item below `menu_bar` has the name: no choice would ever reach the
  /// handler.
  void Add(const MenuItem& menu_bar, const Text& item_name, MenuHandler handler);
  [[nodiscard]] bool HasKey(const Text& item_name) const { return Find(item_name) != nullptr; }
  /// Runs the item's handler; false when the item has no handler.
  [[nodiscard]] bool Run(const Text& item_name) const;
  /// Enables each item for which a handler is registered.
  void EnableItems(const std::vector<Ref<MenuItem>>& items) const;

 private:
  struct Entry {
    Text name;
    MenuHandler handler;
  };
  [[nodiscard]] const Entry* Find(const Text& item_name) const;

  std::vector<Entry> mEntries;
};

}  // namespace quorvel
