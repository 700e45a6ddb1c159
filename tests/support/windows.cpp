#include "support/windows.h"

#include <algorithm>
#include <utility>

namespace quorvel::test {

namespace {

/// A text field, label, button or canvas: all of them keep what they are told.
template <class Kind, class State>
class ControlBase : public Kind {
 public:
  explicit ControlBase(std::shared_ptr<ShownControl> shown) : mShown(std::move(shown)) {}
  ~ControlBase() override {
    mShown->field_listener = nullptr;
    mShown->pressed = nullptr;
  }
  void Update(const State& state) override { mShown->kind = state; }
  void Refresh() override { ++mShown->refreshes; }

 protected:
  std::shared_ptr<ShownControl> mShown;
};

using Label = ControlBase<native::Label, native::LabelState>;
using Button = ControlBase<native::Button, native::ButtonState>;
using Canvas = ControlBase<native::Canvas, native::CanvasState>;

class TextField : public ControlBase<native::TextField, native::TextFieldState> {
 public:
  using ControlBase::ControlBase;
  void SetText(std::string_view text) override {
    mShown->text = text;
    ++mShown->whole_texts;
  }
  void AppendText(std::string_view text) override {
    mShown->text += text;
    ++mShown->added_texts;
  }
};

class Window : public native::Window {
 public:
  Window(Windows& windows, native::WindowListener& listener)
      : mWindows(windows), mShown(std::make_shared<ShownWindow>()) {
    mShown->listener = &listener;
    mWindows.open.insert(mWindows.open.begin(), mShown);
  }
  ~Window() override {
    mShown->listener = nullptr;
    std::erase(mWindows.open, mShown);
  }

  void Update(const native::WindowState& state) override { mShown->state = state; }
  void Show() override {
    const auto place = std::ranges::find(mWindows.open, mShown);
    std::rotate(mWindows.open.begin(), place, place + 1);
  }
  void Refresh() override { ++mShown->refreshes; }

  std::unique_ptr<native::TextField> AddTextField(const native::TextFieldState& state,
                                                  native::TextFieldListener& listener) override {
    auto field = std::make_unique<TextField>(AddShown(state));
    mShown->controls.back()->field_listener = &listener;
    return field;
  }
  std::unique_ptr<native::Label> AddLabel(const native::LabelState& state) override {
    return std::make_unique<Label>(AddShown(state));
  }
  std::unique_ptr<native::Button> AddButton(const native::ButtonState& state,
                                            native::Callback pressed) override {
    auto button = std::make_unique<Button>(AddShown(state));
    mShown->controls.back()->pressed = std::move(pressed);
    return button;
  }
  std::unique_ptr<native::Canvas> AddCanvas(const native::CanvasState& state) override {
    return std::make_unique<Canvas>(AddShown(state));
  }

 private:
  template <class State>
  std::shared_ptr<ShownControl> AddShown(const State& state) {
    auto shown = std::make_shared<ShownControl>();
    shown->kind = state;
    return mShown->controls.emplace_back(std::move(shown));
  }

  Windows& mWindows;
  std::shared_ptr<ShownWindow> mShown;
};

const native::MenuEntry* FindIn(const std::vector<native::MenuEntry>& entries,
                                std::string_view name) {
  for (const auto& entry : entries) {
    if (entry.Name == name) return &entry;
    if (const auto* const below = FindIn(entry.Children, name)) return below;
  }
  return nullptr;
}

}  // namespace

std::unique_ptr<native::Window> Windows::Create(native::WindowListener& listener) {
  return std::make_unique<Window>(*this, listener);
}

void Windows::ShowMenuBar(const std::vector<native::MenuEntry>& menus_now,
                          native::MenuListener& listener) {
  menus = menus_now;
  mMenuListener = &listener;
}

void Windows::ForgetMenuBar() {
  menus.clear();
  mMenuListener = nullptr;
}

std::shared_ptr<ShownWindow> Windows::Find(std::string_view title) const {
  const auto found =
      std::ranges::find_if(open, [&](const auto& window) { return window->state.Title == title; });
  return found == open.end() ? nullptr : *found;
}

std::shared_ptr<ShownControl> Windows::FindControl(std::string_view name) const {
  for (const auto& window : open) {
    for (const auto& control : window->controls) {
      if (control->State().Name == name) return control;
    }
  }
  return nullptr;
}

const native::MenuEntry* Windows::FindEntry(std::string_view name) const {
  return FindIn(menus, name);
}

void Windows::BringToFront(std::string_view title) {
  const auto window = Find(title);
  std::rotate(open.begin(), std::ranges::find(open, window), std::ranges::find(open, window) + 1);
  window->listener->OnActivated();
}

void Windows::OpenMenus() const { mMenuListener->OnMenuNeeded(); }
void Windows::Choose(std::string_view name) const { mMenuListener->OnMenuChosen(name); }
void Windows::Press(std::string_view shortcut) const { mMenuListener->OnShortcut(shortcut); }

}  // namespace quorvel::test
