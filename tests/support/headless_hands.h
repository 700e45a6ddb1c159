#pragma once

#include <chrono>
#include <csignal>
#include <memory>
#include <sstream>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include "support/hands.h"
#include "support/side.h"

namespace quorvel {

/// Hands on a side without a screen.
class HeadlessHands : public Hands {
 public:
  native::Side& Side() override { return side; }
  bool WaitUntil(const std::function<bool()>& reached) override {
    for (int second = 0; second < 100 && !reached(); ++second) {
      side.loop.Settle();
      if (!reached()) side.loop.Advance(std::chrono::seconds(1));
    }
    return reached();
  }
  void Post(std::function<void()> step) override { side.loop.Post(std::move(step)); }

  bool IsOpen(const std::string& title) override { return side.windows.Find(title) != nullptr; }
  std::string ShownText(const std::string& field) override { return Control(field)->text; }
  std::string WindowLook(const std::string& title) override {
    const auto window = side.windows.Find(title);
    const auto& state = window->state;
    const auto [least_width, least_height, most_width, most_height] =
        state.Resizeable
            ? std::tuple(state.MinWidth, state.MinHeight, state.MaxWidth, state.MaxHeight)
            : std::tuple(state.Width, state.Height, state.Width, state.Height);
    std::ostringstream look;
    look << Size(state.Width, state.Height) << " from " << Size(least_width, least_height) << " to "
         << Size(most_width, most_height) << "\n";
    for (const auto& shown : window->controls) {
      const auto& control = shown->State();
      look << control.Name << " " << control.Left << "," << control.Top << " "
           << Size(control.Width, control.Height) << " "
           << std::visit([&](const auto& kind) { return KindLook(kind, shown->text); }, shown->kind)
           << (control.FingerPointer ? " finger" : "") << "\n";
    }
    return look.str();
  }
  std::vector<std::string> EnabledItems() override {
    side.windows.menu_listener->OnMenuNeeded();
    std::vector<std::string> enabled;
    for (const auto& menu : side.windows.menus) {
      for (const auto& item : menu.Children) {
        if (item.Enabled) enabled.push_back(item.Name);
      }
    }
    return enabled;
  }
  std::vector<std::string> OpenedUrls() override { return side.desktop.urls; }
  std::vector<std::string> Messages() override { return side.dialogs.messages; }

  void PressCloseButton(const std::string& title) override { Listener(title).OnCloseRequested(); }
  void Resize(const std::string& title, int width, int height) override {
    Listener(title).OnResized(width, height, true);
    Listener(title).OnResized(width, height, false);
  }
  void BringToFront(const std::string& title) override { side.windows.BringToFront(title); }
  void Choose(const std::string& item) override { side.windows.menu_listener->OnMenuChosen(item); }
  void Type(const std::string& field, const std::string& text) override {
    const auto control = Control(field);
    const auto& state = std::get<native::TextFieldState>(control->kind);
    control->text = state.LimitText > 0 ? text.substr(0, state.LimitText) : text;
    control->field_listener->OnEdited(control->text);
  }
  void PressButton(const std::string& button) override {
    const auto pressed = Control(button)->pressed;
    pressed();
  }
  void UseMouse(Mouse act, const std::string& title, int x, int y) override {
    auto& window = Listener(title);
    if (act == Mouse::Move) window.OnMouseMoved({x, y});
    if (act == Mouse::Press) window.OnMousePressed({x, y});
    if (act == Mouse::Release) window.OnMouseReleased({x, y});
  }
  void AskToQuit() override { std::raise(SIGTERM); }
  void WhileNextMessageIsUp(std::function<void()> act) override {
    side.dialogs.while_open = std::move(act);
  }

  test::Side side;

 private:
  static std::string Size(int32_t width, int32_t height) {
    return std::to_string(width) + "x" + std::to_string(height);
  }
  static std::string KindLook(const native::LabelState& label, const std::string&) {
    return "label '" + label.Text + "' " + std::to_string(label.TextSize) + "px " +
           label.TextColor + (label.Underline ? " underlined" : "") + (label.Link ? " link" : "");
  }
  static std::string KindLook(const native::TextFieldState& field, const std::string& text) {
    return "field '" + text.substr(0, text.find('\n')) + "' " + std::to_string(field.TextSize) +
           "px " + field.TextColor + " on " + field.BackColor +
           (field.ReadOnly ? " read-only" : "") + (field.Multiline ? " many lines" : "") +
           (field.Password ? " secret" : "");
  }
  static std::string KindLook(const native::ButtonState& button, const std::string&) {
    return "button '" + button.Caption + "'";
  }
  static std::string KindLook(const native::CanvasState& canvas, const std::string&) {
    return "picture " + canvas.Backdrop.stem().string();
  }
  std::shared_ptr<test::ShownControl> Control(const std::string& name) {
    return side.windows.FindControl(name);
  }
  native::WindowListener& Listener(const std::string& title) {
    return *side.windows.Find(title)->listener;
  }
};

}  // namespace quorvel
