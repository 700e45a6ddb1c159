// The commands Print and Save, over the log window.

#include <cerrno>
#include <chrono>
#include <ctime>
#include <iomanip>
#include <sstream>

#include "log/main_window.h"
#include "support/program.h"

namespace quorvel {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

class PrintAndSave : public Program {
 protected:
  PrintAndSave() {
    std::tm five_past_nine{};
    std::istringstream("2008-3-7 9:05") >> std::get_time(&five_past_nine, "%Y-%m-%d %H:%M");
    five_past_nine.tm_isdst = -1;
    mSide.desktop.now = std::chrono::system_clock::from_time_t(std::mktime(&five_past_nine));
    Start("1.0.5\nMaple");
  }

  static void LogHolds(const std::string& bytes) { wMain()->efLog()->Text(Text::FromBytes(bytes)); }
  void SaveAs(const std::filesystem::path& path) {
    mSide.dialogs.save_answer = path;
    mHands.Choose("FileSave");
  }
  /// The last print, of a log of `lines` lines on paper for 10 lines of 7 characters.
  test::Print& Printed(int lines, test::PrintAnswer answer) {
    std::string log;
    for (int i = 1; i <= lines; ++i) log += "line " + std::to_string(i) + "\n";
    LogHolds(log);
    answer.width = 2 * 65 + 42;
    answer.height = 2 * 65 + 120;
    mSide.dialogs.print_answer = answer;
    mHands.Choose("FilePrint");
    return mSide.dialogs.print;
  }
};

TEST_F(PrintAndSave, AnEmptyLogAsksNothing) {
  mHands.Choose("FileSave");
  mHands.Choose("FilePrint");
  EXPECT_THAT(Messages(), ElementsAre("There is nothing to save.", "There is nothing to print."));
  EXPECT_THAT(mSide.dialogs.save_questions, IsEmpty());
  EXPECT_EQ(mSide.dialogs.page_setups, 0);
}

TEST_F(PrintAndSave, TheReportIsNamedAfterTheMinuteAndHoldsValidUtf8) {
  LogHolds("caf\xC3\xA9 \xE9\r\n" + std::string("\0end\n", 5));
  SaveAs(mFolder.Path() / "report.txt");
  EXPECT_EQ(mSide.dialogs.save_questions.front().default_name, "Quorvel Report 3-7-2008 9-5.txt");
  EXPECT_EQ(ReadFile(mFolder.Path() / "report.txt"),
            "caf\xC3\xA9 \xC3\xA9\r\n" + std::string("\0end\n", 5));
  EXPECT_EQ(mSide.folders.finder_info[mFolder.Path() / "report.txt"], "textQVL7");
}

TEST_F(PrintAndSave, NamesGetTheExtensionOnceAndAFailureIsSilent) {
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
  for (const std::string& name : {std::string("vanished/report.txt"), std::string(300, 'x')}) {
    SaveAs(mFolder.Path() / name);
  }
  mSide.faults.Arrange("Write", 1, ENOSPC);
  SaveAs(mFolder.Path() / "full.txt");
  EXPECT_THAT(Messages(), IsEmpty());
  EXPECT_THAT(mSide.desktop.errors, IsEmpty());
}

TEST_F(PrintAndSave, SheetsHoldWholeLinesAndAFooter) {
  const auto& print = Printed(25, {});
  ASSERT_THAT(print.sheets, SizeIs(3));
  EXPECT_EQ(print.sheets[1].lines.front(), "line 11");
  EXPECT_EQ(print.sheets[1].block, "42x120 at 65,65");
  EXPECT_THAT(print.sheets[2].lines, SizeIs(5));
  EXPECT_THAT(print.sheets[2].strings, ElementsAre("Page: 3 at 65,245 in Geneva 8"));
  EXPECT_TRUE(print.finished);
  EXPECT_THAT(Printed(10, {}).sheets, SizeIs(1));
  EXPECT_EQ(Printed(100, {}).sheets.back().lines.back(), "0");  // of "line 100"
}

TEST_F(PrintAndSave, PagesAreNumberedFromTheFirstAskedFor) {
  const auto& print = Printed(100, {.first_page = 3, .last_page = 5});
  ASSERT_THAT(print.sheets, SizeIs(3));
  EXPECT_THAT(print.sheets[0].strings, ElementsAre(testing::StartsWith("Page: 3 ")));
  EXPECT_EQ(print.sheets[2].lines.back(), "line 30");
}

TEST_F(PrintAndSave, ACancelOrAQuitEndsAPrintWhereItIs) {
  const auto& cancelled = Printed(100, {.cancel_after = 2});
  ASSERT_THAT(cancelled.sheets, SizeIs(2));
  EXPECT_THAT(cancelled.sheets.back().strings, SizeIs(1));
  mSide.dialogs.print = {};
  mSide.dialogs.accepts_page_setup = false;
  EXPECT_THAT(Printed(100, {}).sheets, IsEmpty());
  mSide.dialogs.accepts_page_setup = true;
  mSide.dialogs.print_answer = std::nullopt;
  mHands.Choose("FilePrint");
  EXPECT_THAT(mSide.dialogs.print.sheets, IsEmpty());
  EXPECT_THAT(Messages(), IsEmpty());
  const auto& quit = Printed(100, {.between_pages = [] { Dispatch([] { Quit(0); }); }});
  EXPECT_THAT(quit.sheets, SizeIs(2));
  EXPECT_FALSE(quit.finished);
}

}  // namespace
}  // namespace quorvel
