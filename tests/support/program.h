#pragma once

#include <gmock/gmock.h>

#include <optional>
#include <string>
#include <vector>

#include "app/entry.h"
#include "platform/runtime/runtime.h"
#include "support/headless_hands.h"
#include "support/temporary_folder.h"

namespace quorvel {

/// The whole program on a headless side without a network, in a documents folder of its own.
class Program : public testing::Test {
 protected:
  static constexpr const char* kListening = "Quorvel v1.0.5 -  Listening...";
  static constexpr const char* kGettingStarted = "Getting Started";

  Program() { mSide.desktop.documents = mFolder.Path(); }
  ~Program() override {
    if (HasNative()) Finish();
  }

  [[nodiscard]] std::filesystem::path KeyFile() const {
    return mFolder.Path() / "Quorvel" / "QuorvelKeyFile";
  }
  /// Starts the program, with these bytes in the key file if given, and stops where the program
  /// waits for an event.
  void Start(const std::optional<std::string>& key_file = {}) {
    if (key_file) WriteFile(KeyFile(), *key_file);
    _Start(mSide);
    _RuntimeRun();
  }
  void Finish() { static_cast<void>(_Finish()); }
  std::vector<std::string> Titles() {
    std::vector<std::string> titles;
    for (const auto& window : mSide.windows.open) titles.push_back(window->state.Title);
    return titles;
  }
  std::vector<std::string> Messages() { return std::exchange(mSide.dialogs.messages, {}); }

  TemporaryFolder mFolder;
  HeadlessHands mHands;
  test::Side& mSide = mHands.side;
};

}  // namespace quorvel
