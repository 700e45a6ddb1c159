// The first run: from a typed key to a key file and a listening program.

#include "support/program.h"
#include "ui/globals.h"

namespace quorvel {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class KeyWindow : public Program {
 protected:
  /// Enters the key and presses the button.
  void Generate(const std::string& key) {
    mSide.windows.FindControl("efKey")->field_listener->OnEdited(key);
    mHands.PressButton("pbGenerate");
  }
  /// Answers the next save dialog with a file in the folder where the program looks.
  void Chooses(const std::string& name) {
    mSide.dialogs.save_answer = KeyFile().parent_path() / name;
  }
};

TEST_F(KeyWindow, AKeyIsSavedTrimmedAndUsedAsTyped) {
  using Case = std::pair<std::string, std::string>;
  for (const auto& [typed, saved] : {Case{" Maple ", "Maple"}, Case{"a     b", "a     b"},
                                     Case{"\xF0\x9F\x8E\x93mapl\r\n", "\xF0\x9F\x8E\x93mapl"}}) {
    SCOPED_TRACE(typed);
    Start();
    Chooses("QuorvelKeyFile");
    Generate(typed);
    EXPECT_THAT(Titles(), ElementsAre(kListening));
    EXPECT_EQ(mGlobals::sProgID.Bytes(), typed);
    EXPECT_EQ(ReadFile(KeyFile()), "1.0.5\n" + saved);
    EXPECT_EQ(mSide.folders.finder_info[KeyFile()], "prefQVL7");
    EXPECT_EQ(std::exchange(mSide.desktop.sounds, {}).size(), 1U);
    EXPECT_THAT(Messages(), IsEmpty());
    Finish();
    std::filesystem::remove(KeyFile());
  }
}

TEST_F(KeyWindow, AShortKeyIsRefusedAndNoFileIsMadeWhenTheDialogIsCancelled) {
  Start();
  for (const char* const key : {"", "four", "     ", "  abc  ", "\xC3\xA9\xC3\xA9"}) {
    Generate(key);
    EXPECT_THAT(Messages(), ElementsAre("Key must be 5-20 characters.")) << key;
  }
  EXPECT_THAT(mSide.dialogs.save_questions, IsEmpty());
  Generate("Maple");
  const auto& asked = mSide.dialogs.save_questions.at(0);
  EXPECT_EQ(asked.folder / ("QuorvelKeyFile" + asked.extension), KeyFile());
  EXPECT_FALSE(std::filesystem::exists(KeyFile()));
}

TEST_F(KeyWindow, AnotherNameIsPutRightBeforeTheUserIsTold) {
  Start();
  WriteFile(KeyFile().parent_path() / "my key.txt", "old");
  bool renamed = false;
  mSide.dialogs.while_open = [&] {
    mSide.dialogs.while_open = [&] { renamed = std::filesystem::exists(KeyFile()); };
  };
  Chooses("my key.txt");
  Generate("Maple");
  EXPECT_TRUE(renamed);
  EXPECT_THAT(Messages(), ElementsAre("Key file must always be named exactly 'QuorvelKeyFile'."));
  EXPECT_EQ(ReadFile(KeyFile()), "1.0.5\nMaple");
}

TEST_F(KeyWindow, ARenameReplacesNoKeyFile) {
  Start("1.0.5\nfour");
  Chooses("other");
  Generate("Maple");
  EXPECT_EQ(ReadFile(KeyFile()), "1.0.5\nfour");
}

}  // namespace
}  // namespace quorvel
