#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "native/window.h"

namespace quorvel::test {

/// What a control was told to show, and how often.
struct ShownControl {
  std::variant<native::LabelState, native::ButtonState, native::TextFieldState, native::CanvasState>
      kind;
  [[nodiscard]] const native::ControlState& State() const {
    return std::visit([](const auto& state) -> const native::ControlState& { return state; }, kind);
  }
  std::string text;  ///< of a text field
  int whole_texts = 0;
  int added_texts = 0;
  int refreshes = 0;
  native::TextFieldListener* field_listener = nullptr;
  native::Callback pressed;
};

/// What a window was told to show, as long as it is open.
struct ShownWindow {
  native::WindowState state;
  native::WindowListener* listener = nullptr;
  int refreshes = 0;
  std::vector<std::shared_ptr<ShownControl>> controls;
};

/// Keeps what the program shows, front window first, for tests to look at and act on.
class Windows : public native::Windows {
 public:
  std::unique_ptr<native::Window> Create(native::WindowListener& listener) override;
  void ShowMenuBar(const std::vector<native::MenuEntry>& menus_now,
                   native::MenuListener& listener) override;
  void ForgetMenuBar() override;

  /// The open window of that title, or null.
  [[nodiscard]] std::shared_ptr<ShownWindow> Find(std::string_view title) const;
  /// The control of that name in any open window, or null.
  [[nodiscard]] std::shared_ptr<ShownControl> FindControl(std::string_view name) const;
  /// The menu entry of that name, or null.
  [[nodiscard]] const native::MenuEntry* FindEntry(std::string_view name) const;

  /// What the user does.
  void BringToFront(std::string_view title);
  void OpenMenus() const;
  void Choose(std::string_view name) const;
  void Press(std::string_view shortcut) const;

  std::vector<std::shared_ptr<ShownWindow>> open;
  std::vector<native::MenuEntry> menus;

 private:
  native::MenuListener* mMenuListener = nullptr;
};

}  // namespace quorvel::test
