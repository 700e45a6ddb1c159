#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace quorvel::native {

/// Where desktops with an application menu put an item.
enum class MenuRole : uint8_t { Plain, About, Quit };

/// A menu (an entry with children) or an item of a menu.
struct MenuEntry {
  std::string Name;  ///< unique in the menu bar; the name by which the item is chosen
  std::string Text;  ///< "&" stands before the letter that opens the item by keyboard
  /// As "Cmd+S": "Cmd" is Command on macOS and Control elsewhere; empty for none. "Cmd++" is also
  /// met by Cmd and the key "=", on which many keyboards have the plus sign.
  std::string KeyboardShortcut;
  MenuRole Role = MenuRole::Plain;
  bool Enabled = false;
  std::vector<MenuEntry> Children;
};

/// What the user does to the menu bar.
class MenuListener {
 public:
  virtual ~MenuListener() = default;
  /// A menu is about to open, a key is about to be tried as a shortcut, or another window has come
  /// to the front. The listener answers with `ShowMenuBar` before the call returns.
  virtual void OnMenuNeeded() = 0;
  /// The user has chosen the item of that name, by mouse or by shortcut.
  virtual void OnMenuChosen(std::string_view name) = 0;
  /// The user has done a thing that counts as pressing that shortcut, as Control and the wheel over
  /// a text field of the front window count as "Cmd++" (away from the user) and "Cmd+-", once for
  /// each 120 units of turn.
  virtual void OnShortcut(std::string_view shortcut) = 0;
};

}  // namespace quorvel::native
