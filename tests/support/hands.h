#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "native/native.h"

namespace quorvel {

/// What a user sees and does, on the native side that the suite was built for.
class Hands {
 public:
  enum class Mouse { Move, Press, Release };

  static std::unique_ptr<Hands> Make();
  virtual ~Hands() = default;

  virtual native::Side& Side() = 0;
  /// Lets events be delivered and time go by until `reached` holds; false if it never does.
  [[nodiscard]] virtual bool WaitUntil(const std::function<bool()>& reached) = 0;
  /// Runs `step` as an event of its own in the event loop, while that runs.
  virtual void Post(std::function<void()> step) = 0;

  // What is on the screen.
  [[nodiscard]] virtual bool IsOpen(const std::string& title) = 0;
  [[nodiscard]] virtual std::string ShownText(const std::string& field) = 0;
  /// The texts of the message boxes so far; each was dismissed as soon as it came up.
  [[nodiscard]] virtual std::vector<std::string> Messages() = 0;

  // What the user does.
  virtual void PressCloseButton(const std::string& title) = 0;
  virtual void Resize(const std::string& title, int width, int height) = 0;
  virtual void PressButton(const std::string& button) = 0;
  virtual void UseMouse(Mouse act, const std::string& title, int x, int y) = 0;
  /// What the desktop does at the end of the session, or else a signal.
  virtual void AskToQuit() = 0;
  /// Does this while the next message box is up.
  virtual void WhileNextMessageIsUp(std::function<void()> act) = 0;
};

}  // namespace quorvel
