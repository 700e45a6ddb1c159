// The windows of the program, as a user sees them on a desktop.

#include <gmock/gmock.h>
#include <private/qguiapplication_p.h>
#include <qpa/qplatformaccessibility.h>
#include <qpa/qplatformintegration.h>

#include <sstream>
#include <string>
#include <utility>

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

std::string gHeard;

// From here on, `gHeard` takes the texts of which the toolkit tells screen readers. Without a
// screen no screen reader can run, so the test switches on what a screen reader would.
void StartScreenReader() {
  QGuiApplicationPrivate::platformIntegration()->accessibility()->setActive(true);
  QAccessible::installUpdateHandler([](QAccessibleEvent* event) {
    if (event->type() != QAccessible::TextInserted) return;
    gHeard += static_cast<QAccessibleTextInsertEvent*>(event)->textInserted().toStdString();
  });
}

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
    looks << "\n" << mHands.WindowLook(title) << "\n";
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
  const auto stays_open = [&](const std::string& title, const char* keys) {
    QTest::keySequence(QApplication::focusWidget(), QKeySequence(keys));
    return mHands.IsOpen(title);
  };
  for (const char* const keys : {"Esc", "Ctrl+W"}) {
    for (const std::string title : {"Help", "", kReady}) {
      title == "Help" ? wHelp()->Show() : title.empty() ? wKeyIs()->Show() : wMain()->Show();
      mHands.BringToFront(title);
      EXPECT_EQ(stays_open(title, keys), title == kReady) << title;
    }
  }
  wHelp()->Show();
  mHands.BringToFront("Help");
  for (const char* const keys : {"Ctrl+F", "Esc", "Ctrl+F", "Shift+Tab", "Esc"}) {
    EXPECT_TRUE(stays_open("Help", keys)) << keys;
  }
}

TEST_F(AllWindows, ScreenReadersHearAnotherTopicAndNewLines) {
  wMain()->Show();
  wHelp()->Show();
  StartScreenReader();
  const auto hears = [&](const std::string& text) {
    return mHands.WaitUntil([&] { return gHeard.find(text) != std::string::npos; });
  };
  mHands.UseMouse(Hands::Mouse::Press, "Help", 30, 40);
  mHands.UseMouse(Hands::Mouse::Release, "Help", 30, 40);
  EXPECT_TRUE(hears("General Information\n\nWhat"));
  for (const char* const line : {"first\n", "second\n"}) {
    wMain()->efLog()->Text(wMain()->efLog()->Text() + line);
    EXPECT_TRUE(hears(line));
  }
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
