// The log window, from a datagram to a line, on either native side.

#include "log/main_window.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

#include "app/app.h"
#include "app/entry.h"
#include "log/decode_word.h"
#include "platform/runtime/runtime.h"
#include "support/hands.h"
#include "support/private_network.h"
#include "ui/globals.h"

namespace quorvel {
namespace {

constexpr const char* kListening = "Quorvel v1.0.5 -  Listening...";

class MainWindow : public testing::Test {
 protected:
  void SetUp() override {
    SKIP_WITHOUT_PRIVATE_NETWORK();
    _Start(mHands->Side());
    App()->mSetGlobals();
    App()->mSetFont();
    mGlobals::sProgID = "Maple-Room-7";
    wMain()->Show();
    mSender->Constructor();
    mSender->SendOnly(true);
    mSender->Bind(5563);
  }
  void TearDown() override {
    for (const auto& window : _WindowSupport::Windows()) Dispatch([&] { window->Close(); });
    static_cast<void>(_Finish());
  }

  void Sends(const std::string& bytes) {
    const Text text = Text::FromBytes(bytes);
    mSender->SendMessageToGroup("Maple-Room-7", 510, mGlobals::mDecodeWordReverse(text));
  }
  [[nodiscard]] static std::string Log() { return std::string(wMain()->efLog()->Text().Bytes()); }
  [[nodiscard]] bool LogBecomes(const std::string& log) {
    return mHands->WaitUntil([&] { return Log() == log; });
  }

  std::unique_ptr<Hands> mHands = Hands::Make();
  Ref<EasyUDPSocket> mSender = New<EasyUDPSocket>();
};

TEST_F(MainWindow, EachMessageIsALineInTheOrderOfArrival) {
  EXPECT_TRUE(mHands->IsOpen(kListening));
  Sends("Hello, World 2007");
  Sends("");
  Sends("two\nlines \xE9");
  const std::string start = "IP Address: 10.77.0.1 Sent: ";
  EXPECT_TRUE(
      LogBecomes(start + "Hello, World 2007\n" + start + "\n" + start + "two\nlines \xE9\n"));
  EXPECT_THAT(mHands->ShownText("efLog"), testing::EndsWith("two\nlines \xC3\xA9\n"));
}

TEST_F(MainWindow, TheLargestMessageIsShownWhole) {
  const std::string largest(65499, 'm');
  Sends(largest);
  EXPECT_TRUE(LogBecomes("IP Address: 10.77.0.1 Sent: " + largest + "\n"));
  EXPECT_EQ(mHands->ShownText("efLog"), Log());
}

TEST_F(MainWindow, FontCommandsWalkBetweenTheLimits) {
  mHands->BringToFront(kListening);
  const auto log = wMain()->efLog();
  for (int i = 0; i < 5; ++i) mHands->Choose("FontSmaller");
  EXPECT_EQ(log->TextSize(), 6);
  for (int i = 0; i < 40; ++i) mHands->Choose("FontLarger");
  EXPECT_EQ(log->TextSize(), 72);
  EXPECT_EQ(mGlobals::iTheFontSize, 12);
}

TEST_F(MainWindow, TheLogFollowsTheWindow) {
  EXPECT_EQ(mHands->PlaceOf("efLog"), (Hands::Place{7, 7, 600, 400}));
  mHands->Resize(kListening, 200, 200);
  const Hands::Place smallest{7, 7, 180, 180};
  EXPECT_TRUE(mHands->WaitUntil([&] { return mHands->PlaceOf("efLog") == smallest; }));
}

TEST_F(MainWindow, ALateMessageOpensNoNewWindow) {
  mHands->PressCloseButton(kListening);
  Sends("late");
  mGlobals::EasyUDPSocket1->Poll();
  EXPECT_FALSE(mHands->IsOpen(kListening));
}

TEST_F(MainWindow, InTestModeTheTimerSendsAndCounts) {
  mGlobals::bTest = true;
  EXPECT_TRUE(
      mHands->WaitUntil([] { return Log().find("nvhhztv hvmg 8\n") != std::string::npos; }));
  mGlobals::bTest = false;
  EXPECT_TRUE(Log().starts_with("IP Address: 10.77.0.1 Sent: nvhhztv hvmg 9\n"));
}

}  // namespace
}  // namespace quorvel
