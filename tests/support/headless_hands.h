#pragma once

#include <chrono>
#include <csignal>
#include <string>
#include <utility>
#include <vector>

#include "native/text/utf8.h"
#include "support/side.h"

namespace quorvel {

/// What a user sees and does, on a side without a screen.
class HeadlessHands {
 public:
  enum class Mouse { Move, Press, Release };

  native::Side& Side() { return side; }
  /// Lets events be delivered and time go by until `reached` holds; false if it never does.
  bool WaitUntil(const std::function<bool()>& reached) {
    for (int second = 0; second < 100 && !reached(); ++second) {
      side.loop.Settle();
      if (!reached()) side.loop.Advance(std::chrono::seconds(1));
    }
    return reached();
  }
  /// Runs `step` as an event of its own in the event loop, while that runs.
  void Post(std::function<void()> step) { side.loop.Post(std::move(step)); }

  // What is on the screen.
  bool IsOpen(const std::string& title) { return side.windows.Find(title) != nullptr; }
  std::string ShownText(const std::string& field) {
    return ToValidUtf8(side.windows.FindControl(field)->text);
  }
  /// The texts of the message boxes so far; each was dismissed as soon as it came up.
  std::vector<std::string> Messages() { return side.dialogs.messages; }

  // What the user does.
  void PressCloseButton(const std::string& title) { Listener(title).OnCloseRequested(); }
  void Resize(const std::string& title, int width, int height) {
    Listener(title).OnResized(width, height, true);
    Listener(title).OnResized(width, height, false);
  }
  void Choose(const std::string& item) { side.windows.menu_listener->OnMenuChosen(item); }
  void PressButton(const std::string& button) {
    const auto pressed = side.windows.FindControl(button)->pressed;
    pressed();
  }
  void UseMouse(Mouse act, const std::string& title, int x, int y) {
    auto& window = Listener(title);
    if (act == Mouse::Move) window.OnMouseMoved({x, y});
    if (act == Mouse::Press) window.OnMousePressed({x, y});
    if (act == Mouse::Release) window.OnMouseReleased({x, y});
  }
  /// What the desktop does at the end of the session, or else a signal.
  void AskToQuit() { std::raise(SIGTERM); }
  /// Does this while the next message box is up.
  void WhileNextMessageIsUp(std::function<void()> act) { side.dialogs.while_open = std::move(act); }

  test::Side side;

 private:
  native::WindowListener& Listener(const std::string& title) {
    return *side.windows.Find(title)->listener;
  }
};

/// The hands of the contract tests, which build with this header.
using Hands = HeadlessHands;

}  // namespace quorvel
