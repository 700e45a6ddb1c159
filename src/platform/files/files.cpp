#include "platform/files/files.h"

#include <cerrno>
#include <map>

#include "native/native.h"
#include "platform/runtime/runtime.h"

namespace quorvel {

namespace {

constexpr size_t kPiece = 65536;
constexpr int32_t kAbsolutePath = 0;

std::map<std::string, std::string>& ExtensionsByTypeName() {
  static std::map<std::string, std::string> types;
  return types;
}

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

TextInputStream::~TextInputStream() { Native().Files().Close(mFile); }

bool TextInputStream::Fill() {
  if (mAtEnd) return false;
  mBuffer.erase(0, std::exchange(mNext, 0));
  const size_t held = mBuffer.size();
  mBuffer.resize(held + kPiece);
  const auto count = Native().Files().Read(mFile, std::span(mBuffer).subspan(held));
  mAtEnd = count <= 0;
  mBuffer.resize(held + (mAtEnd ? 0 : static_cast<size_t>(count)));
  return !mAtEnd;
}

bool TextInputStream::EOF_() { return mNext == mBuffer.size() && !Fill(); }

Text TextInputStream::ReadLine(std::nullptr_t) {
  size_t looked_at = 0;
  size_t end = std::string::npos;
  do {
    end = mBuffer.find_first_of("\r\n", mNext + looked_at);
    looked_at = mBuffer.size() - mNext;
  } while (end == std::string::npos && Fill());
  if (end == std::string::npos) return _ReadAll();
  Text line = Text::FromBytes(std::string_view(mBuffer).substr(mNext, end - mNext));
  mNext = end + 1;
  if (mBuffer[end] == '\r' && !EOF_() && mBuffer[mNext] == '\n') ++mNext;
  return line;
}

Text TextInputStream::_ReadAll() {
  while (Fill()) {
  }
  Text rest = Text::FromBytes(std::string_view(mBuffer).substr(mNext));
  mNext = mBuffer.size();
  return rest;
}

TextOutputStream::~TextOutputStream() { Close(); }

void TextOutputStream::Write(const Text& text) {
  std::string_view rest = text.Bytes();
  while (!rest.empty() && !mFailed) {
    const auto count = Native().Files().Write(mFile, rest);
    mFailed = count <= 0;
    if (!mFailed) rest.remove_prefix(static_cast<size_t>(count));
  }
}

void TextOutputStream::Close() {
  if (mFile < 0) return;
  if (!Native().Files().Sync(mFile)) mFailed = true;
  Native().Files().Close(std::exchange(mFile, -1));
}

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

void FileType::Register() {
  if (std::exchange(mRegistered, true)) return;
  ExtensionsByTypeName().insert_or_assign(std::string(mName.Bytes()),
                                          std::string(mExtensions.Bytes()));
}

void FileType::Deregister() {
  if (std::exchange(mRegistered, false)) ExtensionsByTypeName().erase(std::string(mName.Bytes()));
}

Text FileType::ToText() {
  Register();
  return mName;
}

Ref<FolderItem> GetFolderItem(const Text& name, int32_t path_type) {
  if (path_type != kAbsolutePath || !IsBareName(name)) return Nil;
  return New<FolderItem>(DefaultFolder() / name.Bytes());
}

Ref<FolderItem> GetSaveFolderItem(const Text& file_type, const Text& default_name) {
  // A dialog can only start in a folder that is there.
  MakeFolders(DefaultFolder());
  const auto type = ExtensionsByTypeName().find(std::string(file_type.Bytes()));
  const native::SaveQuestion question{
      .default_name = NativeText(default_name),
      .type_name = NativeText(file_type),
      .extension = type == ExtensionsByTypeName().end() ? std::string() : type->second,
      .folder = DefaultFolder()};
  const auto chosen = Nested([&] { return Native().Dialogs().AskSaveFile(question); });
  return chosen ? New<FolderItem>(*chosen) : Nil;
}

}  // namespace quorvel
