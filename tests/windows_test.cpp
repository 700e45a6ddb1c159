// The windows of the program, on either native side.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

#include "app/app.h"
#include "app/entry.h"
#include "help/about_window.h"
#include "help/help_window.h"
#include "key/create_key_file_window.h"
#include "key/key_is_window.h"
#include "log/decode_word.h"
#include "log/main_window.h"
#include "platform/runtime/runtime.h"
#include "support/hands.h"
#include "support/private_network.h"
#include "ui/globals.h"
#include "ui/resources.h"

namespace quorvel {
namespace {

constexpr const char* kReady = "Quorvel v1.0.5 -  Ready...";
constexpr const char* kListening = "Quorvel v1.0.5 -  Listening...";

class AllWindows : public testing::Test {
 protected:
  AllWindows() {
    _Start(mHands->Side());
    App()->mSetGlobals();
    App()->mSetFont();
    // The log window takes no part in the network unless a test lets the window.
    mGlobals::bAlreadyRegisteredWithNetwork = true;
  }
  ~AllWindows() override {
    for (const auto& window : _WindowSupport::Windows()) Dispatch([&] { window->Close(); });
    static_cast<void>(_Finish());
  }

  [[nodiscard]] static std::string Log() { return std::string(wMain()->efLog()->Text().Bytes()); }

  std::unique_ptr<Hands> mHands = Hands::Make();
};

TEST_F(AllWindows, EnableTheCommandsThatTheyHave) {
  wMain()->Show();
  wHelp()->Show();
  wKeyIs()->Show();
  wCreateKeyFile()->Show();
  wAbout()->Show();
  const std::string help = "FileQuit HelpKeyInformation HelpHelp HelpAbout ";
  for (const auto& [title, commands] : std::vector<std::pair<std::string, std::string>>{
           {kReady, "FileSave FilePrint FileQuit FontSmaller FontLarger " + help.substr(9)},
           {"Help", "FileSave FilePrint " + help},
           {"", "FileSave FilePrint " + help},
           {"Getting Started", "FileSave FilePrint " + help},
           {"About", help}}) {
    mHands->BringToFront(title);
    std::string enabled;
    for (const auto& item : mHands->EnabledItems()) enabled += item + " ";
    EXPECT_EQ(enabled, commands) << title;
  }
}

TEST_F(AllWindows, HelpCommandsOpenEachWindowOnceAndAfresh) {
  wCreateKeyFile()->Show();
  const auto choose = [&](const char* item) {
    mHands->BringToFront("Getting Started");
    mHands->Choose(item);
    return _WindowSupport::Front();
  };
  for (const auto& [item, title] :
       {std::pair("HelpAbout", "About"), std::pair("HelpHelp", "Help")}) {
    const auto first = choose(item);
    EXPECT_TRUE(choose(item) == first);
    mHands->PressCloseButton(title);
    EXPECT_FALSE(mHands->IsOpen(title));
    EXPECT_FALSE(choose(item) == first);
    EXPECT_TRUE(mHands->IsOpen(title));
  }
  mGlobals::sProgID = " Maple ";
  choose("HelpKeyInformation");
  EXPECT_THAT(mHands->ShownText("editFieldExtras1"), testing::HasSubstr("is ' Maple '.  See"));
}

TEST_F(AllWindows, HelpTopicsComeWithTheMouseAndTheKeyboard) {
  wHelp()->Show();
  EXPECT_EQ(mHands->ShownText("EditField1"), ReadMeFirst0().Bytes());
  mHands->MoveMouse("Help", 30, 40);
  EXPECT_TRUE(mHands->HasFingerCursor("StaticText2"));
  mHands->MoveMouse("Help", 400, 300);
  EXPECT_FALSE(mHands->HasFingerCursor("StaticText2"));
  mHands->PressMouse("Help", 30, 130);
  EXPECT_EQ(mHands->ShownText("EditField1"), ReadMeFirst0().Bytes());
  mHands->ReleaseMouse("Help", 400, 300);
  EXPECT_EQ(mHands->ShownText("EditField1"), ReadMeFirstMac4().Bytes());
  EXPECT_THAT(std::string(ReadMeFirstMac4().Bytes()), testing::HasSubstr("QuorvelKeyFile"));
  mHands->FollowLink("StaticText7");
  EXPECT_EQ(mHands->ShownText("EditField1"), ReadMeFirstMac6().Bytes());
}

TEST_F(AllWindows, TheLogHasALineForEachMessageInTheOrderOfArrival) {
  SKIP_WITHOUT_PRIVATE_NETWORK();
  mGlobals::bAlreadyRegisteredWithNetwork = false;
  mGlobals::sProgID = "Maple-Room-7";
  wMain()->Show();
  EXPECT_TRUE(mHands->IsOpen(kListening));
  const auto sender = New<EasyUDPSocket>();
  sender->Constructor();
  sender->SendOnly(true);
  sender->Bind(5563);
  const std::string largest(65499, 'm');
  std::string expected;
  for (const std::string& text :
       {std::string("Hello, World 2007"), std::string(), largest, std::string("two\nlines \xE9")}) {
    sender->SendMessageToGroup("Maple-Room-7", 510,
                               mGlobals::mDecodeWordReverse(Text::FromBytes(text)));
    expected += "IP Address: 10.77.0.1 Sent: " + text + "\n";
  }
  EXPECT_TRUE(mHands->WaitUntil([&] { return Log() == expected; })) << Log();
  EXPECT_EQ(mHands->ShownText("efLog"), expected.replace(expected.size() - 2, 1, "\xC3\xA9"));
}

TEST_F(AllWindows, TheLogHasAFontWithinLimitsAndTheSizeOfItsWindow) {
  wMain()->Show();
  const auto log = wMain()->efLog();
  for (int i = 0; i < 5; ++i) mHands->Choose("FontSmaller");
  EXPECT_EQ(log->TextSize(), 6);
  for (int i = 0; i < 40; ++i) mHands->Choose("FontLarger");
  EXPECT_EQ(log->TextSize(), 72);
  EXPECT_EQ(mGlobals::iTheFontSize, 12);
  mHands->Resize(kReady, 200, 200);
  const Hands::Place smallest{7, 7, 180, 180};
  EXPECT_TRUE(mHands->WaitUntil([&] { return mHands->PlaceOf("efLog") == smallest; }));
}

}  // namespace
}  // namespace quorvel
