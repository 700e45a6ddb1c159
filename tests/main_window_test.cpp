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
  }
  void TearDown() override {
    for (const auto& window : _WindowSupport::Windows()) Dispatch([&] { window->Close(); });
    static_cast<void>(_Finish());
  }

  [[nodiscard]] static std::string Log() { return std::string(wMain()->efLog()->Text().Bytes()); }

  std::unique_ptr<Hands> mHands = Hands::Make();
};

TEST_F(MainWindow, EachMessageIsALineInTheOrderOfArrival) {
  EXPECT_TRUE(mHands->IsOpen(kListening));
  const auto sender = New<EasyUDPSocket>();
  sender->Constructor();
  sender->SendOnly(true);
  sender->Bind(5563);
  std::string expected;
  const std::string largest(65499, 'm');
  for (const std::string& message :
       {std::string("Hello, World 2007"), std::string(), largest, std::string("two\nlines \xE9")}) {
    const Text text = Text::FromBytes(message);
    sender->SendMessageToGroup("Maple-Room-7", 510, mGlobals::mDecodeWordReverse(text));
    expected += "IP Address: 10.77.0.1 Sent: " + message + "\n";
  }
  EXPECT_TRUE(mHands->WaitUntil([&] { return Log().size() >= expected.size(); }));
  EXPECT_EQ(Log(), expected);
  EXPECT_THAT(mHands->ShownText("efLog"),
              testing::EndsWith(largest + "\nIP Address: 10.77.0.1 Sent: two\nlines \xC3\xA9\n"));
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

}  // namespace
}  // namespace quorvel
