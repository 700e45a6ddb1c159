#include <fcntl.h>
#include <gmock/gmock.h>
#include <poll.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <set>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include "platform/files/folder_item.h"
#include "platform/files/pending_file.h"
#include "platform/files/text_stream.h"
#include "support/running.h"
#include "support/temporary_folder.h"

namespace quorvel {
namespace {

using testing::ElementsAre;

class Files : public Running {
 protected:
  Files() { mSide.desktop.documents = mFolder.Path() / "Documents"; }

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

  std::function<void()> mHanging;
  TemporaryFolder mFolder;
};

TEST_F(Files, LinesEndInAnyOfThreeWaysAndAtAnError) {
  const std::string border(65535, 'x'), longest(1048576, 'x');
  using Case = std::pair<std::string, std::vector<std::string>>;
  // Among the line ends are some at and across the border of what is read at once.
  for (const auto& [bytes, lines] :
       {Case{"1.0.5\nkey", {"1.0.5", "key"}}, Case{"1.0.5\r\nkey\r\n", {"1.0.5", "key"}},
        Case{"1.0.5\rkey\r", {"1.0.5", "key"}}, Case{"\n\r\n\rx", {"", "", "", "x"}}, Case{"", {}},
        Case{border + "\r\nkey", {border, "key"}}, Case{border + "y\r\nkey", {border + "y", "key"}},
        Case{longest + "\nkey", {longest, "key"}}, Case{longest + "y\nkey", {longest}}}) {
    EXPECT_TRUE(Lines(bytes) == lines) << bytes.substr(0, 20);
  }
  // The rest of an endless line stays unread.
  mSide.faults.Arrange("Read", 40, EIO);
  EXPECT_TRUE(Lines(std::string(4 * longest.size(), 'x')) == std::vector{longest});
  EXPECT_TRUE(mSide.faults.IsAhead("Read"));
  // A file that cannot be read is absent or empty.
  std::filesystem::create_directory(mFolder.Path() / "folder");
  for (const char* const name : {"folder", "absent"}) EXPECT_FALSE(Item(name)->OpenAsTextFile());
  mSide.faults.Arrange("Read", 1, EIO);
  EXPECT_TRUE(Lines("bytes").empty());
}

TEST_F(Files, ASaveReplacesTheFileItselfAndKeepsLinksAndMode) {
  const std::string longest(255, 'x');
  WriteFile(mFolder.Path() / "other/file", "old text");
  chmod((mFolder.Path() / "other/file").c_str(), 0640);
  std::filesystem::create_symlink("other/file", mFolder.Path() / "link");
  std::filesystem::create_symlink("link", mFolder.Path() / "link to link");
  std::filesystem::create_symlink(mFolder.Path() / "other/new", mFolder.Path() / "dangling");
  using Case = std::pair<std::string, std::string>;
  for (const auto& [name, file] :
       {Case{"link to link", "other/file"}, Case{"dangling", "other/new"}, Case{"fresh", "fresh"},
        Case{longest, longest}}) {
    EXPECT_TRUE(Save(Item(name)) && Save(Item(name))) << name;
    EXPECT_EQ(Content(file), "text");
    EXPECT_EQ(is_symlink(mFolder.Path() / name), name != file);
  }
  EXPECT_EQ(status(mFolder.Path() / "other/file").permissions(), std::filesystem::perms(0640));
  EXPECT_THAT(Names(),
              ElementsAre("dangling", "file", "fresh", "link", "link to link", "new", longest));
}

TEST_F(Files, AFailedOrUnfinishedSaveLeavesTheOldFile) {
  WriteFile(mFolder.Path() / "old", "precious");
  using Case = std::pair<const char*, int>;
  for (const auto& [call, nth] : {Case{"OpenToWrite", 1}, Case{"CreateNew", 1}, Case{"Write", 1},
                                  Case{"Write", 2}, Case{"Sync", 1}, Case{"Replace", 1}}) {
    for (const char* const name : {"old", "new"}) {
      mSide.faults.Arrange(call, nth, ENOSPC);
      EXPECT_FALSE(Save(Item(name))) << call << ' ' << name;
      EXPECT_EQ(Content("old"), "precious");
      EXPECT_THAT(Names(), ElementsAre("old"));
    }
  }
  Item("old")->CreateTextFile()->Write("half a te");
  EXPECT_EQ(Content("old"), "precious");
  EXPECT_THAT(Names(), ElementsAre("old"));
  // Work that hangs after a cancel keeps its file, and goes on when the text is gone.
  mSide.dialogs.await = [&](const native::LongWork& work) {
    return work.cancel(), mHanging = work.run, false;
  };
  EXPECT_FALSE(Save(Item("old")));
  EXPECT_EQ(Names().size(), 2U);
  std::exchange(mHanging, nullptr)();
  EXPECT_THAT(Names(), ElementsAre("old"));
  mSide.dialogs.await = nullptr;
  // The hidden file of a run that was killed, with the name that this run tries first.
  mSide.faults.Arrange("CreateNew", 1, EEXIST);
  EXPECT_TRUE(Save(Item("old")));
  // A folder that takes no new file: the old file itself is written.
  std::filesystem::create_hard_link(mFolder.Path() / "old", mFolder.Path() / "same");
  mSide.faults.Arrange("CreateNew", 1, EACCES);
  EXPECT_TRUE(Save(Item("old")));
  EXPECT_EQ(Content("same"), "text");
}

TEST_F(Files, ARenameTakesTheStreamAlongAndNeverReplaces) {
  WriteFile(mFolder.Path() / "taken", "precious");
  const std::string too_long(256, 'x');
  for (const char* const old : {"", "old text"}) {
    const auto item = Item("draft");
    if (*old != '\0') WriteFile(mFolder.Path() / "draft", old);
    const auto stream = item->CreateTextFile();
    for (const char* const refused : {"taken", "a/b", "", "..", too_long.c_str()}) {
      item->Name(refused);
      EXPECT_EQ(item->Name().Bytes(), "draft") << refused;
    }
    item->Name("Draft");
    stream->Write("text");
    stream->Close();
    EXPECT_EQ(Content("Draft"), "text");
    EXPECT_THAT(Names(), ElementsAre("Draft", "taken"));
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
}

TEST_F(Files, AnObstacleIsFoundBeforeASaveAndNothingIsTouched) {
  WriteFile(mFolder.Path() / "old", "precious");
  mkfifo((mFolder.Path() / "pipe").c_str(), 0600);
  pollfd reader{open((mFolder.Path() / "pipe").c_str(), O_RDONLY | O_NONBLOCK), POLLIN, 0};
  mSide.files.room = 10;
  using Case = std::tuple<const char*, int64_t, int, int>;
  // The third value is the system's answer to a new file in the folder; 0 for the real answer.
  for (const auto& [name, bytes, refused, obstacle] :
       {Case{"new", 10, 0, 0}, Case{"new", 11, 0, ENOSPC}, Case{"new", 1, EACCES, EACCES},
        Case{"old", 10, EACCES, 0}, Case{"old", 11, EACCES, ENOSPC}, Case{"old/new", 1, 0, ENOTDIR},
        Case{"none/new", 1, 0, ENOENT}, Case{"pipe", 11, 0, 0}, Case{"/dev/full", 11, 0, 0}}) {
    if (refused != 0) mSide.faults.Arrange("CreateNew", 1, refused);
    EXPECT_EQ(PendingFile::Obstacle(mFolder.Path() / name, bytes), obstacle) << name;
  }
  EXPECT_THAT(Names(), ElementsAre("old", "pipe"));
  EXPECT_EQ(Content("old"), "precious");
  EXPECT_EQ(poll(&reader, 1, 0), 0);
  close(reader.fd);
}

TEST_F(Files, BareNamesLieInTheDefaultFolder) {
  EXPECT_TRUE(Save(GetFolderItem("QuorvelKeyFile", 0)));
  EXPECT_EQ(Content("Documents/Quorvel/QuorvelKeyFile"), "text");
  for (const char* const name : {"../escape", ""}) EXPECT_FALSE(GetFolderItem(name, 0));
}

}  // namespace
}  // namespace quorvel
