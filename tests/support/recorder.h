#pragma once

#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "native/window.h"

namespace quorvel {

/// The listener of a native window and its parts, which notes what the user does.
struct Recorder : native::WindowListener, native::TextFieldListener, native::MenuListener {
  void OnCloseRequested() override {}
  void OnActivated() override {}
  void OnResized(int32_t, int32_t, bool) override {}
  void OnMouseMoved(native::Point) override {}
  void OnMousePressed(native::Point) override { events.emplace_back("pressed"); }
  void OnMouseReleased(native::Point) override { events.emplace_back("released"); }
  void OnEdited(std::string_view text) override { events.emplace_back(text); }
  std::shared_ptr<const void> KeepText() override { return keep ? keep() : nullptr; }
  void OnMenuNeeded() override {}
  void OnMenuChosen(std::string_view) override {}
  void OnShortcut(std::string_view shortcut) override { events.emplace_back(shortcut); }

  std::vector<std::string> events;
  std::function<std::shared_ptr<const void>()> keep;
};

}  // namespace quorvel
