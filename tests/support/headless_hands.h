#pragma once

#include <chrono>
#include <csignal>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "native/text/utf8.h"
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
  std::string ShownText(const std::string& field) override {
    return ToValidUtf8(Control(field)->text);
  }
  std::vector<std::string> Messages() override { return side.dialogs.messages; }

  void PressCloseButton(const std::string& title) override { Listener(title).OnCloseRequested(); }
  void Resize(const std::string& title, int width, int height) override {
    Listener(title).OnResized(width, height, true);
    Listener(title).OnResized(width, height, false);
  }
  void Choose(const std::string& item) { side.windows.menu_listener->OnMenuChosen(item); }
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
  std::shared_ptr<test::ShownControl> Control(const std::string& name) {
    return side.windows.FindControl(name);
  }
  native::WindowListener& Listener(const std::string& title) {
    return *side.windows.Find(title)->listener;
  }
};

}  // namespace quorvel
