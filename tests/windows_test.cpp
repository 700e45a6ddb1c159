// All windows of the program: their tables on the screen, the menus over them, their texts.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <map>
#include <string>
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

using Items = std::vector<std::string>;

class AllWindows : public testing::Test {
 protected:
  AllWindows() {
    _Start(mHands->Side());
    App()->mSetGlobals();
    App()->mSetFont();
    // The log window takes no part in the network here.
    mGlobals::bAlreadyRegisteredWithNetwork = true;
  }
  ~AllWindows() override {
    for (const auto& window : _WindowSupport::Windows()) Dispatch([&] { window->Close(); });
    static_cast<void>(_Finish());
  }

  struct Case {
    std::string title;
    std::function<Ref<Window>()> open;
    Items enabled;
  };
  static std::vector<Case> Cases() {
    const Items everywhere = {"FileQuit", "HelpKeyInformation", "HelpHelp", "HelpAbout"};
    const Items with_text = {"FileSave",           "FilePrint", "FileQuit",
                             "HelpKeyInformation", "HelpHelp",  "HelpAbout"};
    const Items with_log = {"FileSave",   "FilePrint",          "FileQuit", "FontSmaller",
                            "FontLarger", "HelpKeyInformation", "HelpHelp", "HelpAbout"};
    return {{"Quorvel v1.0.5 -  Ready...", [] { return Ref<Window>(wMain()); }, with_log},
            {"Help", [] { return Ref<Window>(wHelp()); }, with_text},
            {"", [] { return Ref<Window>(wKeyIs()); }, with_text},
            {"Getting Started", [] { return Ref<Window>(wCreateKeyFile()); }, with_text},
            {"About", [] { return Ref<Window>(wAbout()); }, everywhere}};
  }

  std::unique_ptr<Hands> mHands = Hands::Make();
};

TEST_F(AllWindows, EnableWhatTheyCanDo) {
  for (const auto& each : Cases()) static_cast<void>(each.open());
  for (const auto& [title, open, enabled] : Cases()) {
    mHands->BringToFront(title);
    EXPECT_EQ(mHands->EnabledItems(), enabled) << title;
  }
}

TEST_F(AllWindows, ShowWhatTheirTablesSay) {
  const std::map<std::string, std::pair<int, int>> sizes = {
      {"Quorvel v1.0.5 -  Ready...", {620, 420}},
      {"Help", {700, 500}},
      {"", {315, 123}},
      {"Getting Started", {637, 474}},
      {"About", {594, 130}}};
  const std::vector<std::pair<std::string, Hands::Place>> places = {
      {"efLog", {7, 7, 600, 400}},
      {"EditField1", {201, 8, 493, 461}},
      {"StaticText1", {201, 473, 493, 20}},
      {"StaticText9", {20, 242, 175, 20}},
      {"editFieldExtras1", {8, 6, 301, 110}},
      {"pbGenerate", {317, 434, 135, 20}},
      {"efKey", {9, 433, 296, 22}},
      {"efHelp", {9, 8, 617, 413}},
      {"Canvas1", {8, 0, 127, 127}},
      {"Canvas2", {136, 6, 385, 58}},
      {"stVersion", {153, 65, 370, 20}},
      {"stCopyright", {153, 93, 436, 20}}};
  for (const auto& each : Cases()) static_cast<void>(each.open());
  for (const auto& [title, size] : sizes) EXPECT_EQ(mHands->ContentSize(title), size) << title;
  for (const auto& [name, place] : places) EXPECT_EQ(mHands->PlaceOf(name), place) << name;
}

TEST_F(AllWindows, HelpCommandsOpenEachWindowOnceAndAfresh) {
  static_cast<void>(wCreateKeyFile());
  mHands->BringToFront("Getting Started");
  for (const auto& [item, title] :
       {std::pair("HelpAbout", "About"), std::pair("HelpHelp", "Help")}) {
    mHands->Choose(item);
    const auto first = _WindowSupport::Front();
    mHands->BringToFront("Getting Started");
    mHands->Choose(item);
    EXPECT_TRUE(_WindowSupport::Front() == first);
    mHands->PressCloseButton(title);
    EXPECT_FALSE(mHands->IsOpen(title));
    mHands->BringToFront("Getting Started");
    mHands->Choose(item);
    EXPECT_TRUE(mHands->IsOpen(title));
    EXPECT_FALSE(_WindowSupport::Front() == first);
  }
  mGlobals::sProgID = " Maple ";
  mHands->Choose("HelpKeyInformation");
  EXPECT_THAT(mHands->ShownText("editFieldExtras1"), testing::HasSubstr("is ' Maple '.  See"));
}

TEST_F(AllWindows, HelpTopicsComeWithTheMouseAndTheKeyboard) {
  static_cast<void>(wHelp());
  EXPECT_EQ(mHands->ShownText("EditField1"), ReadMeFirst0().Bytes());
  mHands->MoveMouse("Help", 30, 40);
  EXPECT_TRUE(mHands->HasFingerCursor("StaticText2"));
  mHands->PressMouse("Help", 30, 130);
  EXPECT_EQ(mHands->ShownText("EditField1"), ReadMeFirst0().Bytes());
  mHands->ReleaseMouse("Help", 400, 300);
  EXPECT_EQ(mHands->ShownText("EditField1"), ReadMeFirstMac4().Bytes());
  EXPECT_THAT(std::string(ReadMeFirstMac4().Bytes()), testing::HasSubstr("QuorvelKeyFile"));
  mHands->FollowLink("StaticText7");
  EXPECT_EQ(mHands->ShownText("EditField1"), ReadMeFirstMac6().Bytes());
}

}  // namespace
}  // namespace quorvel
