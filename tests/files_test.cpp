#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cerrno>
#include <string>
#include <vector>

#include "platform/files/file_type.h"
#include "platform/files/folder_item.h"
#include "platform/files/text_stream.h"
#include "platform/runtime/runtime.h"
#include "support/side.h"
#include "support/temporary_folder.h"

namespace quorvel {
namespace {

using testing::ElementsAre;

class Files : public testing::Test {
 protected:
  Files() {
    mSide.desktop.documents = mFolder.Path() / "Documents";
    RuntimeInit(mSide);
  }
  ~Files() override { static_cast<void>(RuntimeExit()); }

  Ref<FolderItem> Item(const std::string& name) { return New<FolderItem>(mFolder.Path() / name); }
  std::string Content(const std::string& name) { return ReadFile(mFolder.Path() / name); }
  std::vector<std::string> Lines(const std::string& bytes) {
    WriteFile(mFolder.Path() / "lines", bytes);
    std::vector<std::string> lines;
    const auto stream = Item("lines")->OpenAsTextFile();
    while (!stream->EOF_()) lines.emplace_back(stream->ReadLine(Nil).Bytes());
    return lines;
  }

  TemporaryFolder mFolder;
  test::Side mSide;
};

TEST_F(Files, LinesEndInAnyOfThreeWays) {
  EXPECT_THAT(Lines("1.0.5\nkey"), ElementsAre("1.0.5", "key"));
  EXPECT_THAT(Lines("1.0.5\r\nkey\r\n"), ElementsAre("1.0.5", "key"));
  EXPECT_THAT(Lines("1.0.5\rkey\r"), ElementsAre("1.0.5", "key"));
  EXPECT_THAT(Lines("\n\r\n\rx"), ElementsAre("", "", "", "x"));
  EXPECT_THAT(Lines(""), ElementsAre());
  const std::string nul("a\0b", 3);
  EXPECT_THAT(Lines(nul + "\n" + nul), ElementsAre(nul, nul));
  // Line ends at and across the border of what is read at once.
  const std::string border(65535, 'x');
  EXPECT_THAT(Lines(border + "\r\nkey"), ElementsAre(border, "key"));
  EXPECT_THAT(Lines(border + "y\r\nkey"), ElementsAre(border + "y", "key"));
  const std::string longest(1048576, 'x');
  EXPECT_TRUE(Lines(longest + "\nkey") == (std::vector<std::string>{longest, "key"}));
  EXPECT_TRUE(Lines(longest + "y\nkey") == std::vector{longest});
  // The rest of an endless line stays unread.
  mSide.faults.Arrange("Read", 40, EIO);
  EXPECT_TRUE(Lines(std::string(4 * longest.size(), 'x')) == std::vector{longest});
  EXPECT_TRUE(mSide.faults.IsAhead("Read"));
}

TEST_F(Files, AFileThatCannotBeReadIsNilOrEnds) {
  std::filesystem::create_directory(mFolder.Path() / "folder");
  EXPECT_TRUE(Item("folder")->Exists());
  EXPECT_FALSE(Item("folder")->OpenAsTextFile());
  EXPECT_FALSE(Item("absent")->OpenAsTextFile());
  WriteFile(mFolder.Path() / "broken", "bytes");
  mSide.faults.Arrange("Read", 1, EIO);
  EXPECT_TRUE(Item("broken")->OpenAsTextFile()->EOF_());
}

TEST_F(Files, ARenameKeepsTheStreamAndNeverReplaces) {
  WriteFile(mFolder.Path() / "taken", "precious");
  const auto item = Item("draft");
  const auto stream = item->CreateTextFile();
  for (const char* const refused : {"taken", "a/b", "", "..", "no\nsuch/folder"}) {
    item->Name(refused);
    EXPECT_EQ(item->Name().Bytes(), "draft") << refused;
  }
  item->Name("final");
  stream->Write("text");
  stream->Close();
  EXPECT_TRUE(item->Exists());
  EXPECT_EQ(Content("final"), "text");
  EXPECT_EQ(Content("taken"), "precious");
  EXPECT_FALSE(Item("draft")->Exists());
}

TEST_F(Files, FailedWritesAreKnown) {
  EXPECT_FALSE(New<FolderItem>(mFolder.Path() / "no" / "folder")->CreateTextFile());
  for (const char* const call : {"Write", "Sync"}) {
    const auto stream = Item("full")->CreateTextFile();
    mSide.faults.Arrange(call, 1, ENOSPC);
    stream->Write("text");
    stream->Close();
    EXPECT_TRUE(stream->WriteError()) << call;
  }
}

TEST_F(Files, BareNamesLieInTheDefaultFolder) {
  const auto item = GetFolderItem("QuorvelKeyFile", 0);
  EXPECT_FALSE(item->Exists());
  const auto stream = item->CreateTextFile();
  stream->Write("1.0.5");
  stream->Close();
  EXPECT_EQ(Content("Documents/Quorvel/QuorvelKeyFile"), "1.0.5");
  EXPECT_FALSE(GetFolderItem("../escape", 0));
  EXPECT_FALSE(GetFolderItem("", 0));
}

TEST_F(Files, TheSaveDialogStartsThereWithTheRegisteredType) {
  const auto type = New<FileType>();
  type->Name("text");
  type->Extensions(".txt");
  EXPECT_FALSE(GetSaveFolderItem(type->ToText(), "Report"));
  mSide.dialogs.save_answers.emplace_back(mFolder.Path() / "chosen");
  EXPECT_EQ(GetSaveFolderItem("text", "Report")->Name().Bytes(), "chosen");
  const auto& question = mSide.dialogs.save_questions.front();
  EXPECT_EQ(question.default_name, "Report");
  EXPECT_EQ(question.extension, ".txt");
  EXPECT_EQ(question.folder, mFolder.Path() / "Documents" / "Quorvel");
}

}  // namespace
}  // namespace quorvel
