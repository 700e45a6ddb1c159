#pragma once

#include <algorithm>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "native/window.h"

namespace quorvel::test {

/// What a control was told to show, and how often.
struct ShownControl {
  native::ControlState state;
  std::string text = {};  ///< of a text field
  int whole_texts = 0;
  native::TextFieldListener* field_listener = nullptr;
  native::Callback pressed = {};
};

/// What a window was told to show, as long as the window is open.
struct ShownWindow {
  native::WindowState state;
  native::WindowListener* listener = nullptr;
  int refreshes = 0;
  std::vector<std::shared_ptr<ShownControl>> controls;
};

using ShownWindows = std::vector<std::shared_ptr<ShownWindow>>;

/// A text field, label, button or canvas that keeps what the control is told to show.
template <class Kind, class State>
class Control : public Kind {
 public:
  explicit Control(std::shared_ptr<ShownControl> shown) : mShown(std::move(shown)) {}
  void Update(const State& state) override {
    mShown->state = static_cast<const native::ControlState&>(state);
  }
  void Refresh() override {}

 protected:
  std::shared_ptr<ShownControl> mShown;
};

class TextField : public Control<native::TextField, native::TextFieldState> {
 public:
  using Control::Control;
  void ShowText(std::string_view text, size_t kept) override {
    if (kept < mShown->text.size()) ++mShown->whole_texts;
    mShown->text.resize(kept);
    mShown->text += text.substr(kept);
  }
};

class Window : public native::Window {
 public:
  Window(ShownWindows& open, native::WindowListener& listener) : mOpen(open) {
    mShown->listener = &listener;
    Window::Show();
  }
  ~Window() override { std::erase(mOpen, mShown); }

  void Update(const native::WindowState& state) override { mShown->state = state; }
  void Show() override {
    std::erase(mOpen, mShown);
    mOpen.insert(mOpen.begin(), mShown);
  }
  void Refresh() override { ++mShown->refreshes; }

  std::unique_ptr<native::TextField> AddTextField(const native::TextFieldState& state,
                                                  native::TextFieldListener& listener) override {
    return std::make_unique<TextField>(Shown(state, &listener));
  }
  std::unique_ptr<native::Label> AddLabel(const native::LabelState& state) override {
    return std::make_unique<Control<native::Label, native::LabelState>>(Shown(state));
  }
  std::unique_ptr<native::Button> AddButton(const native::ButtonState& state,
                                            native::Callback pressed) override {
    return std::make_unique<Control<native::Button, native::ButtonState>>(
        Shown(state, nullptr, std::move(pressed)));
  }
  std::unique_ptr<native::Canvas> AddCanvas(const native::CanvasState& state) override {
    return std::make_unique<Control<native::Canvas, native::CanvasState>>(Shown(state));
  }

 private:
  std::shared_ptr<ShownControl> Shown(const native::ControlState& state,
                                      native::TextFieldListener* listener = nullptr,
                                      native::Callback pressed = {}) {
    return mShown->controls.emplace_back(std::make_shared<ShownControl>(
        ShownControl{.state = state, .field_listener = listener, .pressed = std::move(pressed)}));
  }

  ShownWindows& mOpen;
  std::shared_ptr<ShownWindow> mShown = std::make_shared<ShownWindow>();
};

/// Keeps what the program shows, front window first, for tests to look at and act on.
class Windows : public native::Windows {
 public:
  std::unique_ptr<native::Window> Create(native::WindowListener& listener) override {
    return std::make_unique<Window>(open, listener);
  }
  void ShowMenuBar(const std::vector<native::MenuEntry>&, native::MenuListener& listener) override {
    menu_listener = &listener;
  }
  void ForgetMenuBar() override { menu_listener = nullptr; }

  /// The open window of that title, or null.
  [[nodiscard]] std::shared_ptr<ShownWindow> Find(std::string_view title) const {
    const auto has_title = [&](const auto& window) { return window->state.Title == title; };
    const auto found = std::ranges::find_if(open, has_title);
    return found == open.end() ? nullptr : *found;
  }
  /// The control of that name in any open window, or null.
  [[nodiscard]] std::shared_ptr<ShownControl> FindControl(std::string_view name) const {
    for (const auto& window : open) {
      for (const auto& control : window->controls) {
        if (control->state.Name == name) return control;
      }
    }
    return nullptr;
  }

  ShownWindows open;
  native::MenuListener* menu_listener = nullptr;
};

}  // namespace quorvel::test
