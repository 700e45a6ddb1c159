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
  /// The content's size and the user's limits, then a line for each control, as in `windows.txt`:
  /// the name, the rectangle, the kind and the look, with the first line of a field's text or the
  /// number of a picture's resource.
  [[nodiscard]] virtual std::string WindowLook(const std::string& title) = 0;
  [[nodiscard]] virtual std::string ShownText(const std::string& field) = 0;
  /// The items that can be chosen once the user has opened the menus over the front window.
  [[nodiscard]] virtual std::vector<std::string> EnabledItems() = 0;
  /// The addresses that the browser was asked to open.
  [[nodiscard]] virtual std::vector<std::string> OpenedUrls() = 0;
  /// The texts of the message boxes so far; each was dismissed as soon as it came up.
  [[nodiscard]] virtual std::vector<std::string> Messages() = 0;

  // What the user does.
  virtual void PressCloseButton(const std::string& title) = 0;
  virtual void Resize(const std::string& title, int width, int height) = 0;
  virtual void BringToFront(const std::string& title) = 0;
  virtual void Choose(const std::string& item) = 0;
  virtual void Type(const std::string& field, const std::string& text) = 0;
  virtual void PressButton(const std::string& button) = 0;
  virtual void UseMouse(Mouse act, const std::string& title, int x, int y) = 0;
  /// What the desktop does at the end of the session, or else a signal.
  virtual void AskToQuit() = 0;
  /// Does this while the next message box is up.
  virtual void WhileNextMessageIsUp(std::function<void()> act) = 0;
};

}  // namespace quorvel
