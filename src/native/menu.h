#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace quorvel::native {

enum class MenuRole : uint8_t { Plain, About, Quit };

struct MenuEntry {
  std::string Name;
  std::string Text;              ///< "&" marks the mnemonic
  std::string KeyboardShortcut;  ///< as "Cmd+S"; empty for none
  MenuRole Role = MenuRole::Plain;
  bool Enabled = false;
  std::vector<MenuEntry> Children;
};

class MenuListener {
 public:
  virtual ~MenuListener() = default;
  /// A menu is about to open, a shortcut to be tried, or another window has come to the front.
  virtual void OnMenuNeeded() = 0;
  virtual void OnMenuChosen(std::string_view name) = 0;
};

}  // namespace quorvel::native
