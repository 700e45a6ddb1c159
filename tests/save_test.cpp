// The command Save of the log window.

#include <cerrno>
#include <chrono>
#include <ctime>

#include "log/main_window.h"
#include "support/program.h"

namespace quorvel {
namespace {

using testing::IsEmpty;

class Save : public Program {
 protected:
  Save() { Start("1.0.5\nMaple"); }

  static void LogHolds(const std::string& bytes) { wMain()->efLog()->Text(Text::FromBytes(bytes)); }
  void SaveAs(const std::filesystem::path& path) {
    mSide.dialogs.save_answer = path;
    mHands.Choose("FileSave");
  }
};

TEST_F(Save, AnEmptyLogAsksNothing) {
  mHands.Choose("FileSave");
  mHands.Choose("FilePrint");
  EXPECT_THAT(Messages(),
              testing::ElementsAre("There is nothing to save.", "There is nothing to print."));
  EXPECT_THAT(mSide.dialogs.save_questions, IsEmpty());
}

TEST_F(Save, TheReportIsNamedAfterTheMinuteAndHoldsValidUtf8) {
  std::tm five_past_nine{};
  ASSERT_TRUE(strptime("2008-3-7 9:05", "%Y-%m-%d %H:%M", &five_past_nine));
  five_past_nine.tm_isdst = -1;
  mSide.desktop.now = std::chrono::system_clock::from_time_t(std::mktime(&five_past_nine));
  LogHolds("\xC3\xA9 \xE9\r\n");
  SaveAs(mFolder.Path() / "report.txt");
  const auto& asked = mSide.dialogs.save_questions.front();
  EXPECT_EQ(asked.default_name + asked.extension, "Quorvel Report 3-7-2008 9-5.txt.txt");
  EXPECT_EQ(ReadFile(mFolder.Path() / "report.txt"), "\xC3\xA9 \xC3\xA9\r\n");
  EXPECT_EQ(mSide.folders.finder_info[mFolder.Path() / "report.txt"], "textQVL7");
}

TEST_F(Save, AFullDiskIsToldAndTheUserIsAskedAgain) {
  LogHolds("\xE9 five");  // a byte more as UTF-8
  mSide.files.room = 6;
  SaveAs(mFolder.Path() / "a.txt");
  EXPECT_THAT(Messages(), ElementsAre(testing::EndsWith("a.txt' cannot be saved.\n\n"
                                                        "The disk has too little room.")));
  const auto& again = mSide.dialogs.save_questions.at(1);
  EXPECT_EQ(again.folder / again.default_name, mFolder.Path() / "a.txt");
}

TEST_F(Save, NamesGetTheExtensionOnceAndAFailureIsSilent) {
  using Case = std::pair<std::string, const char*>;
  LogHolds("text");
  WriteFile(mFolder.Path() / "taken.txt", "precious");
  // Where the name with the extension is taken, the file keeps the name that the user gave.
  for (const auto& [typed, saved] :
       {Case{"report.TXT", "report.TXT"}, Case{"a", "a.txt"}, Case{".txt", ".txt"},
        Case{"log.text", "log.text.txt"}, Case{"taken", "taken"}}) {
    SaveAs(mFolder.Path() / typed);
    EXPECT_EQ(ReadFile(mFolder.Path() / saved), "text") << typed;
  }
  EXPECT_EQ(ReadFile(mFolder.Path() / "taken.txt"), "precious");
  mHands.Choose("FileSave");
  mSide.faults.Arrange("Write", 1, ENOSPC);
  SaveAs(mFolder.Path() / "full.txt");
  EXPECT_THAT(Messages(), IsEmpty());
}

// The text is written in three pieces.
TEST_F(Save, WhatComesMeanwhileIsNotInTheFileAndACancelOrAQuitKeepsTheOldFile) {
  const std::string text(9 << 20, 'x');
  const auto folder = mFolder.Path() / "saved";
  std::function<void()> cancel;
  mSide.dialogs.await = [&](const native::LongWork& work) {
    cancel = work.cancel;
    return work.run(), true;
  };
  const std::function<void()> stop = [&] { cancel(); };
  const std::function<void()> quit = [&] { Dispatch([] { Quit(0); }), cancel(); };
  using Case = std::tuple<const char*, int, std::function<void()>>;
  for (const auto& [call, nth, act] :
       {Case{"Write", 2, nullptr}, Case{"Write", 3, stop}, Case{"Sync", 2, stop},
        Case{"Sync", 3, stop}, Case{"Write", 2, quit}}) {
    WriteFile(folder / "report.txt", "precious");
    LogHolds(text);
    mSide.faults.Arrange(call, nth, [&, act = act] {
      LogHolds(text + "late");
      if (act) act();
      return false;
    });
    SaveAs(folder / "report.txt");
    EXPECT_FALSE(mSide.faults.IsAhead(call));
    EXPECT_TRUE(ReadFile(folder / "report.txt") == (act ? "precious" : text));
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder), {}), 1);
  }
  EXPECT_TRUE(mSide.loop.Stopped());
}

}  // namespace
}  // namespace quorvel
