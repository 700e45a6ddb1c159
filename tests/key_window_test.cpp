// The first run: from a typed key to a key file and a listening program.

#include <gmock/gmock.h>

#include <cerrno>

#include "support/program.h"
#include "ui/globals.h"

namespace quorvel {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr const char* kTooShort = "Key must be 5-20 characters.";
constexpr const char* kWrongName = "Key file must always be named exactly 'QuorvelKeyFile'.";

class KeyWindow : public Program {
 protected:
  /// Types the key and presses the button; the dialog is answered with `name`, in the folder where
  /// the program looks.
  void Generate(const std::string& key, const std::string& name = "QuorvelKeyFile") {
    Types("efKey", key);
    mSide.dialogs.save_answers.emplace_back(KeyFile().parent_path() / name);
    Press("pbGenerate");
  }
};

TEST_F(KeyWindow, AKeyIsSavedTrimmedAndUsedAsTyped) {
  struct Case {
    std::string typed;
    std::string saved;
  };
  const std::string four_bytes = "\xF0\x9F\x8E\x93";
  std::string twenty;
  for (int i = 0; i < 20; ++i) twenty += four_bytes;
  for (const Case& each : std::vector<Case>{{"Maple", "Maple"},
                                            {" Maple ", "Maple"},
                                            {"a     b", "a     b"},
                                            {"Maple\r\n", "Maple"},
                                            {twenty, twenty}}) {
    SCOPED_TRACE(each.typed);
    Run([&] {
      Generate(each.typed);
      EXPECT_THAT(Titles(), ElementsAre(kListening));
      EXPECT_EQ(mGlobals::sProgID.Bytes(), each.typed);
      EXPECT_EQ(ReadFile(KeyFile()), "1.0.5\n" + each.saved);
      EXPECT_THAT(Messages(), IsEmpty());
    });
    Run([&] { EXPECT_EQ(mGlobals::sProgID.Bytes(), each.saved); });
    std::filesystem::remove(KeyFile());
  }
}

TEST_F(KeyWindow, AShortKeyIsRefusedAndStaysInTheField) {
  Run([&] {
    for (const char* const key : {"", "four", "     ", "  abc  ", "\xC3\xA9\xC3\xA9"}) {
      Types("efKey", key);
      Press("pbGenerate");
      EXPECT_THAT(Messages(), ElementsAre(kTooShort)) << key;
    }
    EXPECT_THAT(mSide.dialogs.save_questions, IsEmpty());
    Types("efKey", "Maple");
    Press("pbGenerate");
    EXPECT_EQ(mSide.dialogs.save_questions.front().default_name, "QuorvelKeyFile");
    EXPECT_TRUE(std::filesystem::is_directory(mSide.dialogs.save_questions.front().folder));
    EXPECT_THAT(Titles(), ElementsAre(kGettingStarted));
    EXPECT_FALSE(std::filesystem::exists(KeyFile()));
  });
}

TEST_F(KeyWindow, AnotherNameIsPutRight) {
  Run([&] {
    Generate("Maple", "my key.txt");
    EXPECT_THAT(Messages(), ElementsAre(kWrongName));
    EXPECT_EQ(ReadFile(KeyFile()), "1.0.5\nMaple");
    EXPECT_FALSE(std::filesystem::exists(KeyFile().parent_path() / "my key.txt"));
  });
}

TEST_F(KeyWindow, NothingIsLostWhenTheFileCannotBeMade) {
  KeyFileHolds("1.0.5\nfour");
  Run([&] {
    Messages();
    mSide.dialogs.save_answers.emplace_back(mFolder.Path() / "no" / "folder" / "QuorvelKeyFile");
    Types("efKey", "Maple");
    Press("pbGenerate");
    EXPECT_THAT(Titles(), ElementsAre(kGettingStarted));
    // A key file that is there already is not replaced by a rename.
    Generate("Maple", "other");
    EXPECT_EQ(ReadFile(KeyFile()), "1.0.5\nfour");
    EXPECT_EQ(ReadFile(KeyFile().parent_path() / "other"), "1.0.5\nMaple");
  });
}

}  // namespace
}  // namespace quorvel
