#include <fcntl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <set>
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
  /// All that the folder holds, hidden files too.
  std::set<std::string> Names() {
    std::set<std::string> names;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(mFolder.Path())) {
      if (!entry.is_directory()) names.insert(entry.path().filename());
    }
    return names;
  }
  static bool Save(const Ref<FolderItem>& item) {
    const auto stream = item->CreateTextFile();
    if (!stream) return false;
    stream->Write("te");
    stream->Write("xt");
    stream->Close();
    return !stream->WriteError();
  }
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

TEST_F(Files, ASaveReplacesTheFileItselfAndKeepsLinksAndMode) {
  const std::string longest(255, 'x');
  std::filesystem::create_directory(mFolder.Path() / "other");
  std::filesystem::create_symlink("other/file", mFolder.Path() / "link");
  std::filesystem::create_symlink("link", mFolder.Path() / "link to link");
  std::filesystem::create_symlink(mFolder.Path() / "other/new", mFolder.Path() / "dangling");
  WriteFile(mFolder.Path() / "plain", "old text");
  WriteFile(mFolder.Path() / "other/file", "old text");
  chmod((mFolder.Path() / "other/file").c_str(), 0640);
  struct Case {
    std::string name;
    std::string file;
  };
  for (const auto& [name, file] : {Case{"link", "other/file"}, Case{"link to link", "other/file"},
                                   Case{"dangling", "other/new"}, Case{"plain", "plain"},
                                   Case{"fresh", "fresh"}, Case{longest, longest}}) {
    SCOPED_TRACE(name);
    EXPECT_TRUE(Save(Item(name)) && Save(Item(name)));
    EXPECT_EQ(Content(file), "text");
    EXPECT_EQ(is_symlink(mFolder.Path() / name), name != file);
  }
  const auto mode = [&](const char* name) { return status(mFolder.Path() / name).permissions(); };
  EXPECT_EQ(mode("other/file"), std::filesystem::perms(0640));
  EXPECT_EQ(mode("fresh"), mode("plain"));
  // The hidden file is beside the target, on the same file system. A link is renamed as a link.
  const auto link = Item("link to link");
  const auto stream = link->CreateTextFile();
  EXPECT_EQ(std::distance(std::filesystem::directory_iterator(mFolder.Path() / "other"), {}), 3);
  link->Name("moved");
  stream->Write("new text");
  stream->Close();
  EXPECT_EQ(Content("other/file"), "new text");
  EXPECT_THAT(Names(),
              ElementsAre("dangling", "file", "fresh", "link", "moved", "new", "plain", longest));
}

TEST_F(Files, AFailedOrUnfinishedSaveLeavesTheOldFile) {
  struct Case {
    const char* call;
    int nth;
    int error;
  };
  const auto expect_untouched = [&] {
    EXPECT_EQ(Content("old"), "precious");
    EXPECT_EQ(Names(), std::set<std::string>{"old"});
    EXPECT_FALSE(Item("new")->Exists());
  };
  WriteFile(mFolder.Path() / "old", "precious");
  for (const auto& [call, nth, error] :
       {Case{"OpenToWrite", 1, EACCES}, Case{"CreateNew", 1, ENOSPC}, Case{"Write", 1, ENOSPC},
        Case{"Write", 2, ENOSPC}, Case{"Sync", 1, EIO}, Case{"Replace", 1, ENOSPC}}) {
    for (const char* const name : {"old", "new"}) {
      mSide.faults.Arrange(call, nth, error);
      EXPECT_FALSE(Save(Item(name))) << call << ' ' << name;
      expect_untouched();
    }
  }
  EXPECT_FALSE(Save(New<FolderItem>(mFolder.Path() / "no" / "folder")));
  Item("old")->CreateTextFile()->Write("half a te");
  expect_untouched();
  // The hidden file of a run that was killed, with the name that this run tries first.
  mSide.faults.Arrange("CreateNew", 1, EEXIST);
  EXPECT_TRUE(Save(Item("old")));
}

TEST_F(Files, ARenameTakesTheStreamAlongAndNeverReplaces) {
  WriteFile(mFolder.Path() / "taken", "precious");
  const std::string too_long(256, 'x');
  for (const bool replaces : {false, true}) {
    SCOPED_TRACE(replaces);
    const auto item = Item("draft");
    if (replaces) WriteFile(mFolder.Path() / "draft", "old text");
    const auto stream = item->CreateTextFile();
    EXPECT_TRUE(item->Exists());
    for (const char* const refused :
         {"taken", "a/b", "", "..", "no\nsuch/folder", too_long.c_str()}) {
      item->Name(refused);
      EXPECT_EQ(item->Name().Bytes(), "draft") << refused;
    }
    item->Name("Draft");
    EXPECT_EQ(Content("Draft"), replaces ? "old text" : "");
    stream->Write("text");
    stream->Close();
    EXPECT_EQ(Content("Draft"), "text");
    EXPECT_EQ(Names(), (std::set<std::string>{"Draft", "taken"}));
    std::filesystem::remove(mFolder.Path() / "Draft");
  }
  // Another program makes a file of the new name before the text is finished.
  const auto item = Item("draft");
  const auto stream = item->CreateTextFile();
  item->Name("final");
  WriteFile(mFolder.Path() / "final", "precious");
  stream->Close();
  EXPECT_EQ(item->Name().Bytes(), "draft");
  EXPECT_EQ(Content("final") + Content("taken"), "preciousprecious");
  EXPECT_EQ(Names(), (std::set<std::string>{"draft", "final", "taken"}));
}

TEST_F(Files, AFileThatCannotBeReplacedIsWrittenDirectly) {
  WriteFile(mFolder.Path() / "file", "older text");
  std::filesystem::create_hard_link(mFolder.Path() / "file", mFolder.Path() / "same");
  mSide.faults.Arrange("CreateNew", 1, EACCES);
  EXPECT_TRUE(Save(Item("file")));
  EXPECT_EQ(Content("same"), "text");

  const auto pipe = mFolder.Path() / "pipe";
  ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
  EXPECT_FALSE(Item("pipe")->CreateTextFile());
  const int reader = open(pipe.c_str(), O_RDONLY | O_NONBLOCK);
  EXPECT_TRUE(Save(Item("pipe")));
  std::string received(9, ' ');
  EXPECT_EQ(read(reader, received.data(), received.size()), 4);
  const auto stream = Item("pipe")->CreateTextFile();
  close(reader);
  stream->Write("text");
  EXPECT_TRUE(stream->WriteError());
  EXPECT_TRUE(std::filesystem::is_fifo(pipe));
}

TEST_F(Files, BareNamesLieInTheDefaultFolder) {
  const auto item = GetFolderItem("QuorvelKeyFile", 0);
  EXPECT_FALSE(item->Exists());
  EXPECT_TRUE(Save(item));
  EXPECT_EQ(Content("Documents/Quorvel/QuorvelKeyFile"), "text");
  EXPECT_FALSE(GetFolderItem("../escape", 0));
  EXPECT_FALSE(GetFolderItem("", 0));
}

TEST_F(Files, TheSaveDialogStartsThereWithTheRegisteredType) {
  const auto type = New<FileType>();
  type->Name("text");
  type->Extensions(".txt");
  EXPECT_FALSE(GetSaveFolderItem(type->ToText(), "Report"));
  mSide.dialogs.save_answer = mFolder.Path() / "chosen";
  EXPECT_EQ(GetSaveFolderItem("text", "Report")->Name().Bytes(), "chosen");
  const auto& question = mSide.dialogs.save_questions.front();
  EXPECT_EQ(question.default_name, "Report");
  EXPECT_EQ(question.extension, ".txt");
  EXPECT_EQ(question.folder, mFolder.Path() / "Documents" / "Quorvel");
}

}  // namespace
}  // namespace quorvel
