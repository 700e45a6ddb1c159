// The windows of the program, tested on each native side.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include "app/app.h"
#include "app/entry.h"
#include "help/about_window.h"
#include "help/help_window.h"
#include "key/create_key_file_window.h"
#include "key/key_is_window.h"
#include "log/main_window.h"
#include "platform/runtime/runtime.h"
#include "support/hands.h"
#include "ui/globals.h"
#include "ui/resources.h"

namespace quorvel {
namespace {

constexpr const char* kReady = "Quorvel v1.0.5 -  Ready...";

class AllWindows : public testing::Test {
 protected:
  AllWindows() {
    _Start(mHands->Side());
    App()->mSetGlobals();
    App()->mSetFont();
    // The log window takes no part in the network.
    mGlobals::bAlreadyRegisteredWithNetwork = true;
  }
  ~AllWindows() override {
    for (const auto& window : _WindowSupport::Windows()) Dispatch([&] { window->Close(); });
    static_cast<void>(_Finish());
  }

  std::unique_ptr<Hands> mHands = Hands::Make();
};

TEST_F(AllWindows, HaveTheirCommandsTheirControlsAndTheirTexts) {
  const std::string help = "FileQuit HelpKeyInformation HelpHelp HelpAbout ";
  const std::string text = "FileSave FilePrint " + help;
  const std::string caption = "' 12px #0000ff underlined";
  const std::string small = "' 10px #000000";
  const std::string topic = " read-only many lines";
  struct Control {
    std::string name, look;
    Text (*text)() = nullptr;
  };
  struct Row {
    std::string title, look, commands;
    std::function<void()> open;
    std::vector<Control> controls;
  };
  const Row rows[] = {
      {kReady,
       "620x420 from 200x200 to 3000x3000",
       "FileSave FilePrint FileQuit FontSmaller FontLarger " + help.substr(9),
       [] { wMain()->Show(); },
       {{"efLog", "7,7 600x400 field 12px #000000 on #ffffff" + topic}}},
      {"Help",
       "700x500 from 700x500 to 700x500",
       text,
       [] { wHelp()->Show(); },
       {{"EditField1", "201,8 493x461 field 14px #000000 on #ffffff" + topic, ReadMeFirst0},
        {"StaticText1",
         "201,473 493x20 label 'http://www.quorvel.example/products/quorvel.htm' 14px #ff0000 "
         "underlined"},
        {"StaticText2", "20,32 175x20 label 'General Information" + caption},
        {"StaticText3", "20,62 175x20 label 'System Requirements" + caption},
        {"StaticText4", "20,92 175x20 label 'What's new in this version?" + caption},
        {"StaticText5", "20,122 175x20 label 'Frequently Asked Questions" + caption},
        {"StaticText7", "20,182 175x20 label 'Support" + caption},
        {"StaticText8", "20,212 175x20 label 'Use and Distribution" + caption},
        {"StaticText9", "20,242 175x20 label 'Other Titles" + caption}}},
      {"",
       "315x123 from 315x123 to 315x123",
       text,
       [] { wKeyIs()->Show(); },
       {{"editFieldExtras1", "8,6 301x110 field 12px #000000 on #ffffff" + topic,
         [] {
           return Text(
               "No key has been set.  See information in the HELP guide under FREQUENTLY "
               "ASKED QUESTIONS for details on how to set or change the key.");
         }}}},
      {"Getting Started",
       "637x474 from 637x474 to 637x474",
       text,
       [] { wCreateKeyFile()->Show(); },
       {{"pbGenerate", "317,434 135x20 button 'Generate Key File'"},
        {"efKey", "9,433 296x22 field 0px #000000 on #ffffff"},
        {"efHelp", "9,8 617x413 field 0px #000000 on #ffffff many lines", QuorvelInstructions}}},
      {"About",
       "594x130 from 594x130 to 594x130",
       help,
       [] { wAbout()->Show(); },
       {{"Canvas1", "8,0 127x127 picture 170"},
        {"Canvas2", "136,6 385x58 picture 169"},
        {"stVersion", "153,65 370x20 label 'Quorvel v1.0.5" + small},
        {"stCopyright", "153,93 436x20 label 'Copyright © 2026 the makers of Quorvel." + small}}}};
  for (const Row& row : rows) row.open();
  for (const Row& row : rows) {
    EXPECT_EQ(mHands->WindowLook(row.title), row.look) << row.title;
    mHands->BringToFront(row.title);
    std::string enabled;
    for (const auto& item : mHands->EnabledItems()) enabled += item + " ";
    EXPECT_EQ(enabled, row.commands) << row.title;
    for (const auto& [name, look, shown] : row.controls) {
      EXPECT_EQ(mHands->LookOf(name), look);
      if (shown != nullptr) {
        EXPECT_EQ(mHands->ShownText(name), shown().Bytes()) << name;
      }
    }
  }
  mHands->Type("efKey", "A key of more than twenty characters");
  EXPECT_EQ(mHands->ShownText("efKey"), "A key of more than t");
}

TEST_F(AllWindows, HelpCommandsShowTheOpenWindowOrOpenANewWindow) {
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

TEST_F(AllWindows, MouseAndKeyboardOpenHelpTopicsAndTheWebPage) {
  wHelp()->Show();
  const auto click = [&](int x, int y) {
    mHands->UseMouse(Hands::Mouse::Press, "Help", x, y);
    mHands->UseMouse(Hands::Mouse::Release, "Help", 400, y);
    return mHands->ShownText("EditField1");
  };
  for (const auto& [y, caption, head] : {std::tuple(40, "StaticText2", "General Information\n"),
                                         {70, "StaticText3", "System Requirements\n"},
                                         {100, "StaticText4", "What's new"},
                                         {130, "StaticText5", "Frequently Asked Questions\n"},
                                         {190, "StaticText7", "Support\n"},
                                         {220, "StaticText8", "Use and Distribution\n"},
                                         {250, "StaticText9", "Other Titles\n"}}) {
    mHands->UseMouse(Hands::Mouse::Move, "Help", 30, y);
    EXPECT_TRUE(mHands->HasFingerCursor(caption));
    EXPECT_THAT(click(30, y), testing::StartsWith(head));
    mHands->UseMouse(Hands::Mouse::Move, "Help", 100, 400);
    EXPECT_FALSE(mHands->HasFingerCursor(caption));
  }
  EXPECT_TRUE(mHands->OpenedUrls().empty());
  click(250, 483);
  mHands->FollowLink("StaticText1");
  click(250, 495);
  const std::string page = "http://www.quorvel.example/products/quorvel.htm";
  EXPECT_THAT(mHands->OpenedUrls(), testing::ElementsAre(page, page));
  mHands->FollowLink("StaticText7");
  EXPECT_THAT(mHands->ShownText("EditField1"), testing::StartsWith("Support\n"));
}

TEST_F(AllWindows, TheLogKeepsFontLimitsAndFollowsTheWindowSize) {
  wMain()->Show();
  mHands->BringToFront(kReady);
  const auto log = wMain()->efLog();
  for (int i = 0; i < 5; ++i) mHands->Choose("FontSmaller");
  EXPECT_EQ(log->TextSize(), 6);
  for (int i = 0; i < 40; ++i) mHands->Choose("FontLarger");
  EXPECT_EQ(log->TextSize(), 72);
  mHands->TurnWheelWithControl("efLog", -240);
  EXPECT_EQ(log->TextSize(), 68);
  wAbout()->Show();
  mHands->BringToFront("About");
  mHands->TurnWheelWithControl("efLog", -240);
  EXPECT_EQ(log->TextSize(), 68);
  mHands->Resize(kReady, 200, 200);
  EXPECT_TRUE(
      mHands->WaitUntil([&] { return mHands->LookOf("efLog").starts_with("7,7 180x180 "); }));
}

}  // namespace
}  // namespace quorvel
