#include "platform/files/folder_item.h"

#include <cerrno>
#include <string>
#include <string_view>
#include <system_error>

#include "native/native.h"
#include "platform/files/file_type.h"
#include "platform/files/pending_file.h"
#include "platform/files/text_stream.h"
#include "platform/runtime/runtime.h"

namespace quorvel {

namespace {

constexpr int32_t kAbsolutePath = 0;

bool IsBareName(const Text& name) {
  const std::string_view bytes = name.Bytes();
  const bool special = bytes.empty() || bytes == "." || bytes == "..";
  return !special && bytes.find_first_of(std::string_view("/\0", 2)) == std::string_view::npos;
}

void MakeFolders(const std::filesystem::path& folder) {
  if (folder.empty() || Native().Folders().Exists(folder.string())) return;
  MakeFolders(folder.parent_path());
  Native().Folders().MakeFolder(folder.string());
}

std::string AsText(const std::filesystem::path& path) {
  return NativeText(Text::FromBytes(path.string()));
}

std::string Refusal(const std::filesystem::path& path, int obstacle) {
  const bool full = obstacle == ENOSPC || obstacle == EDQUOT;
  return "The file '" + AsText(path) + "' cannot be saved.\n\n" +
         (full ? "The disk has too little room." : std::generic_category().message(obstacle));
}

}  // namespace

std::filesystem::path DefaultFolder() { return Native().Desktop().DocumentsFolder() / "Quorvel"; }

const std::filesystem::path& FolderItem::Path() const {
  return mPending ? mPending->Path() : mPath;
}

bool FolderItem::Exists() const {
  return (mPending && mPending->IsOpen()) || Native().Folders().Exists(Path().string());
}

Text FolderItem::Name() const { return Path().filename().string().c_str(); }

void FolderItem::Name(const Text& name) {
  if (!IsBareName(name)) return;
  const auto renamed = Path().parent_path() / name.Bytes();
  if (mPending) {
    mPending->Rename(renamed);
  } else if (Native().Folders().RenameToNew(mPath.string(), renamed.string())) {
    mPath = renamed;
  }
}

Ref<TextInputStream> FolderItem::OpenAsTextFile() const {
  const int file = Native().Files().OpenToRead(Path().string());
  if (file < 0) NoteFailedOpen(Path().string(), errno);
  return file < 0 ? Nil : New<TextInputStream>(file);
}

Ref<TextOutputStream> FolderItem::CreateTextFile() {
  if (Path().parent_path() == DefaultFolder()) MakeFolders(Path().parent_path());
  const auto pending = PendingFile::Open(Path());
  if (!pending) return Nil;
  mPending = pending;
  return New<TextOutputStream>(pending);
}

void FolderItem::MacCreator(const Text& creator) {
  mMacCreator = creator;
  WriteFinderInfo();
}

void FolderItem::MacType(const Text& type) {
  mMacType = type;
  WriteFinderInfo();
}

void FolderItem::WriteFinderInfo() const {
  Native().Folders().SetFinderInfo(Path().string(), mMacType.Bytes(), mMacCreator.Bytes());
}

Ref<FolderItem> GetFolderItem(const Text& name, int32_t path_type) {
  if (path_type != kAbsolutePath || !IsBareName(name)) return Nil;
  return New<FolderItem>(DefaultFolder() / name.Bytes());
}

Ref<FolderItem> GetSaveFolderItem(const Text& file_type, const Text& default_name, int64_t bytes) {
  // A dialog can only start in a folder that is there.
  MakeFolders(DefaultFolder());
  const auto type = FindFileType(file_type);
  native::SaveQuestion question{.default_name = NativeText(default_name),
                                .type_name = NativeText(file_type),
                                .extension = type ? NativeText(type->extensions) : std::string(),
                                .folder = DefaultFolder()};
  if (!question.default_name.ends_with(question.extension)) question.extension.clear();
  while (true) {
    const auto chosen = Nested([&] { return Native().Dialogs().AskSaveFile(question); });
    if (!chosen) return Nil;
    const int obstacle = PendingFile::Obstacle(*chosen, bytes);
    if (obstacle == 0) return New<FolderItem>(*chosen);
    Nested([&] { Native().Dialogs().Message(Refusal(*chosen, obstacle)); });
    question.default_name = AsText(chosen->filename());
    question.folder = chosen->parent_path();
  }
}

}  // namespace quorvel
