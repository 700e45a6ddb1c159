// The windows of the program, as a user sees them on a desktop.

#include <gmock/gmock.h>

#include <algorithm>
#include <sstream>
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
#include "support/qt_hands.h"
#include "support/temporary_folder.h"
#include "ui/globals.h"

namespace quorvel {
namespace {

using testing::HasSubstr;

constexpr const char* kReady = "Quorvel v1.0.5 -  Ready...";
constexpr const char* kGettingStarted = "Getting Started";

class AllWindows : public testing::Test {
 protected:
  AllWindows() {
    _Start(mHands.Side());
    App()->mSetGlobals();
    App()->mSetFont();
    // The log window takes no part in the network.
    mGlobals::bAlreadyRegisteredWithNetwork = true;
  }
  ~AllWindows() override {
    for (const auto& window : _WindowSupport::Windows()) Dispatch([&] { window->Close(); });
    static_cast<void>(_Finish());
  }

  QtHands mHands;
};

TEST_F(AllWindows, HaveTheirCommandsTheirControlsAndTheirTexts) {
  wMain()->Show();
  wHelp()->Show();
  wKeyIs()->Show();
  wCreateKeyFile()->Show();
  wAbout()->Show();
  std::ostringstream looks;
  for (const std::string title : {kReady, "Help", "", kGettingStarted, "About"}) {
    mHands.BringToFront(title);
    looks << title << ":";
    for (const auto& item : mHands.EnabledItems()) looks << " " << item;
    looks << "\n" << mHands.WindowLook(title) << "Tab:" << mHands.TabOrder() << "\n\n";
  }
  EXPECT_EQ(looks.str(), ReadFile(QUORVEL_WINDOWS));
  mHands.Type("efKey", "A key of more than twenty characters");
  EXPECT_EQ(mHands.ShownText("efKey"), "A key of more than t");
}

TEST_F(AllWindows, HelpCommandsShowTheOpenWindowOrOpenANewWindow) {
  wCreateKeyFile()->Show();
  const auto choose = [&](const char* item) {
    mHands.BringToFront(kGettingStarted);
    mHands.Choose(item);
    return _WindowSupport::Front();
  };
  for (const auto& [item, title] :
       {std::pair("HelpAbout", "About"), std::pair("HelpHelp", "Help")}) {
    const auto first = choose(item);
    EXPECT_TRUE(choose(item) == first);
    mHands.PressCloseButton(title);
    EXPECT_FALSE(mHands.IsOpen(title));
    EXPECT_FALSE(choose(item) == first);
  }
  mGlobals::sProgID = " Maple ";
  choose("HelpKeyInformation");
  EXPECT_THAT(mHands.ShownText("editFieldExtras1"), HasSubstr("is ' Maple '.  See"));
}

TEST_F(AllWindows, ClicksOpenHelpTopicsAndTheWebPage) {
  wHelp()->Show();
  const auto click = [&](int x, int y) {
    mHands.UseMouse(Hands::Mouse::Press, "Help", x, y);
    mHands.UseMouse(Hands::Mouse::Release, "Help", 400, y);
    return mHands.ShownText("EditField1");
  };
  for (const auto& [y, topic] :
       {std::pair(40, "General Information"), std::pair(70, "System Requirements"),
        std::pair(100, "What's new in this version?"), std::pair(130, "Frequently Asked Questions"),
        std::pair(190, "Support"), std::pair(220, "Use and Distribution"),
        std::pair(250, "Other Titles")}) {
    mHands.UseMouse(Hands::Mouse::Move, "Help", 30, y);
    const std::string hovered = topic + std::string("' 12px #0000ff underlined link finger - Link");
    EXPECT_THAT(mHands.WindowLook("Help"), HasSubstr(hovered));
    EXPECT_THAT(click(30, y), testing::StartsWith(topic));
    mHands.UseMouse(Hands::Mouse::Move, "Help", 100, 400);
    EXPECT_THAT(mHands.WindowLook("Help"), Not(HasSubstr("finger")));
  }
  EXPECT_TRUE(mHands.OpenedUrls().empty());
  click(250, 483);
  EXPECT_THAT(mHands.OpenedUrls(),
              testing::ElementsAre("http://www.quorvel.example/products/quorvel.htm"));
}

TEST_F(AllWindows, KeysCloseHelpAndKeyInformationButASearchFirst) {
  using Case = std::tuple<std::string, Qt::Key, Qt::KeyboardModifiers, bool>;
  for (const auto& [title, key, modifiers, closes] :
       {Case{"Help", Qt::Key_Escape, {}, true}, Case{"Help", Qt::Key_W, Qt::ControlModifier, true},
        Case{"Help", Qt::Key_Escape, Qt::ShiftModifier, false}, Case{"", Qt::Key_Escape, {}, true},
        Case{"", Qt::Key_W, Qt::ControlModifier, true}, Case{"About", Qt::Key_Escape, {}, false},
        Case{kReady, Qt::Key_W, Qt::ControlModifier, false}}) {
    wMain()->Show();
    wHelp()->Show();
    wKeyIs()->Show();
    wAbout()->Show();
    mHands.BringToFront(title);
    mHands.Press(key, modifiers);
    EXPECT_EQ(mHands.IsOpen(title), !closes) << title;
  }
  wHelp()->Show();
  mHands.BringToFront("Help");
  for (const bool in_search : {true, false}) {
    mHands.Press(Qt::Key_F, Qt::ControlModifier);
    if (!in_search) mHands.FocusOn("StaticText2");
    mHands.Press(Qt::Key_Escape, {});
    EXPECT_TRUE(mHands.IsOpen("Help"));
  }
  mHands.Press(Qt::Key_Escape, {});
  EXPECT_FALSE(mGlobals::bHelpIsOpen);
}

TEST_F(AllWindows, ScreenReadersHearAnotherTopicAndNewLines) {
  wMain()->Show();
  wHelp()->Show();
  static std::vector<std::string> heard;
  const auto hear = [](QAccessibleEvent* event) {
    if (event->type() != QAccessible::TextInserted) return;
    heard.push_back(static_cast<QAccessibleTextInsertEvent*>(event)->textInserted().toStdString());
  };
  const auto hears = [&](const std::string& begin) {
    return mHands.WaitUntil([&] {
      return std::ranges::any_of(heard, [&](const auto& text) { return text.starts_with(begin); });
    });
  };
  mHands.SwitchScreenReader(true);
  const auto before = QAccessible::installUpdateHandler(hear);
  mHands.UseMouse(Hands::Mouse::Press, "Help", 30, 40);
  mHands.UseMouse(Hands::Mouse::Release, "Help", 30, 40);
  EXPECT_TRUE(hears("General Information"));
  wMain()->efLog()->Text("first\n");
  EXPECT_TRUE(hears("first\n"));
  wMain()->efLog()->Text("first\nsecond\n");
  EXPECT_TRUE(hears("second\n"));
  QAccessible::installUpdateHandler(before);
  mHands.SwitchScreenReader(false);
}

TEST_F(AllWindows, TheLogKeepsFontLimits) {
  wMain()->Show();
  mHands.BringToFront(kReady);
  for (const auto& [item, size] : {std::pair("FontSmaller", 6), std::pair("FontLarger", 72)}) {
    for (int i = 0; i < 40; ++i) mHands.Choose(item);
    EXPECT_EQ(wMain()->efLog()->TextSize(), size);
  }
}

}  // namespace
}  // namespace quorvel
