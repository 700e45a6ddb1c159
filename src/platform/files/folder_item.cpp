#include "platform/files/folder_item.h"

#include <cerrno>
#include <string>
#include <string_view>

#include "native/native.h"
#include "platform/files/file_type.h"
#include "platform/files/text_stream.h"
#include "platform/runtime/runtime.h"

namespace quorvel {

namespace {

constexpr int32_t kAbsolutePath = 0;

std::filesystem::path DefaultFolder() { return Native().Desktop().DocumentsFolder() / "Quorvel"; }

bool IsBareName(const Text& name) {
  const std::string_view bytes = name.Bytes();
  const bool special = bytes.empty() || bytes == "." || bytes == "..";
  return !special && bytes.find_first_of(std::string_view("/\0", 2)) == std::string_view::npos;
}

void MakeFolders(const std::filesystem::path& folder) {
  if (folder.empty() || Native().Files().Exists(folder.string())) return;
  MakeFolders(folder.parent_path());
  Native().Files().MakeFolder(folder.string());
}

}  // namespace

bool FolderItem::Exists() const { return Native().Files().Exists(mPath.string()); }
Text FolderItem::Name() const { return mPath.filename().string().c_str(); }

void FolderItem::Name(const Text& name) {
  if (!IsBareName(name)) return;
  const auto renamed = mPath.parent_path() / name.Bytes();
  if (Native().Files().RenameToNew(mPath.string(), renamed.string())) mPath = renamed;
}

Ref<TextInputStream> FolderItem::OpenAsTextFile() const {
  const int file = Native().Files().OpenToRead(mPath.string());
  if (file < 0) NoteFailedOpen(mPath.string(), errno);
  return file < 0 ? Nil : New<TextInputStream>(file);
}

Ref<TextOutputStream> FolderItem::CreateTextFile() const {
  if (mPath.parent_path() == DefaultFolder()) MakeFolders(mPath.parent_path());
  const int file = Native().Files().Create(mPath.string());
  return file < 0 ? Nil : New<TextOutputStream>(file);
}

void FolderItem::MacCreator(const Text& creator) {
  mMacCreator = creator;
  Native().Files().SetFinderInfo(mPath.string(), mMacType.Bytes(), mMacCreator.Bytes());
}

void FolderItem::MacType(const Text& type) {
  mMacType = type;
  Native().Files().SetFinderInfo(mPath.string(), mMacType.Bytes(), mMacCreator.Bytes());
}

Ref<FolderItem> GetFolderItem(const Text& name, int32_t path_type) {
  if (path_type != kAbsolutePath || !IsBareName(name)) return Nil;
  return New<FolderItem>(DefaultFolder() / name.Bytes());
}

Ref<FolderItem> GetSaveFolderItem(const Text& file_type, const Text& default_name) {
  // A dialog can only start in a folder that is there.
  MakeFolders(DefaultFolder());
  const auto type = FindFileType(file_type);
  const native::SaveQuestion question{
      .default_name = NativeText(default_name),
      .type_name = NativeText(file_type),
      .extension = type ? NativeText(type->extensions) : std::string(),
      .folder = DefaultFolder()};
  const auto chosen = Nested([&] { return Native().Dialogs().AskSaveFile(question); });
  return chosen ? New<FolderItem>(*chosen) : Nil;
}

}  // namespace quorvel
