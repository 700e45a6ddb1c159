#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

#include "app/entry.h"
#include "support/headless_hands.h"
#include "support/temporary_folder.h"

namespace quorvel {

/// The whole program on a headless side without a network, in a documents folder of its own.
class Program : public testing::Test {
 protected:
  static constexpr const char* kListening = "Quorvel v1.0.5 -  Listening...";
  static constexpr const char* kGettingStarted = "Getting Started";

  Program() { mSide.desktop.documents = mFolder.Path(); }

  [[nodiscard]] std::filesystem::path KeyFile() const {
    return mFolder.Path() / "Quorvel" / "QuorvelKeyFile";
  }
  void KeyFileHolds(const std::string& bytes) const { WriteFile(KeyFile(), bytes); }
  /// Runs the program through; `body` happens once it has started, then it ends by itself.
  int Run(const std::function<void()>& body) {
    mSide.loop.Post(body);
    return RunQuorvel(mSide);
  }
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
