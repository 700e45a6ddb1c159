#include "platform/files/pending_file.h"

#include <cerrno>
#include <chrono>
#include <string>
#include <utility>

#include "native/native.h"
#include "platform/runtime/runtime.h"

namespace quorvel {

namespace {

constexpr int kMostLinks = 40;
constexpr int kMostNames = 100;

FileCalls& Files() { return Native().Files(); }
FolderCalls& Folders() { return Native().Folders(); }

// The path of the file itself, which need not exist.
std::filesystem::path Resolved(std::filesystem::path path) {
  for (int links = 0; links < kMostLinks; ++links) {
    const std::string target = Folders().LinkTarget(path.string());
    if (target.empty()) break;
    path = path.parent_path() / target;
  }
  return path;
}

// Another name at each call, and short, so that a file with the longest possible name can be saved.
std::string HiddenName() {
  return ".quorvel-" + std::to_string(std::chrono::steady_clock::now().time_since_epoch().count());
}

struct HiddenFile {
  std::filesystem::path path;
  int file = -1;
};

HiddenFile CreateHiddenFile(const std::filesystem::path& folder, int like) {
  HiddenFile hidden;
  for (int names = 0; names < kMostNames; ++names) {
    hidden.path = folder / HiddenName();
    hidden.file = Files().CreateNew(hidden.path.string(), like);
    if (hidden.file >= 0 || errno != EEXIST) break;
  }
  return hidden;
}

bool FolderTakesNoFile(int error) { return error == EACCES || error == EPERM || error == EROFS; }

}  // namespace

PendingFile::PendingFile(std::filesystem::path path, std::filesystem::path hidden, int file)
    : mPath(std::move(path)), mChosen(mPath), mHidden(std::move(hidden)), mFile(file) {}

std::shared_ptr<PendingFile> PendingFile::Open(const std::filesystem::path& path) {
  const int old = Files().OpenToWrite(path.string());
  if (old < 0 && errno != ENOENT) return nullptr;
  const auto folder = Resolved(path).parent_path();
  HiddenFile hidden;
  bool direct = old >= 0 && !Files().IsReplaceable(old, folder.string());
  if (!direct) {
    hidden = CreateHiddenFile(folder, old);
    direct = hidden.file < 0 && old >= 0 && FolderTakesNoFile(errno);
  }
  if (direct && Files().Empty(old)) return std::make_shared<PendingFile>(path, "", old);
  if (old >= 0) Files().Close(old);
  return hidden.file < 0 ? nullptr : std::make_shared<PendingFile>(path, hidden.path, hidden.file);
}

bool PendingFile::HasNoFileYet() const {
  return IsOpen() && !mHidden.empty() && (mPath != mChosen || Folders().IsFree(mPath.string()));
}

bool PendingFile::Rename(const std::filesystem::path& renamed) {
  if (HasNoFileYet()) {
    if (!Folders().IsFree(renamed.string())) return false;
  } else {
    if (!Folders().RenameToNew(mPath.string(), renamed.string())) return false;
    mChosen = renamed;
  }
  mPath = renamed;
  return true;
}

void PendingFile::Write(std::string_view bytes) {
  while (IsOpen() && !mFailed && !bytes.empty()) {
    const auto count = Files().Write(mFile, bytes);
    mFailed = count <= 0;
    if (!mFailed) bytes.remove_prefix(static_cast<size_t>(count));
  }
}

void PendingFile::Close() {
  if (!IsOpen()) return;
  mFailed = mFailed || !Files().Sync(mFile);
  Files().Close(std::exchange(mFile, -1));
  if (mHidden.empty()) return;
  if (!mFailed && MoveHiddenFile()) {
    Folders().SyncFolder(mHidden.parent_path().string());
  } else {
    mFailed = true;
    Folders().Remove(mHidden.string());
  }
}

bool PendingFile::MoveHiddenFile() {
  if (mPath != mChosen) {
    if (Folders().RenameToNew(mHidden.string(), mPath.string())) return true;
    // Another program took the new name meanwhile: the text goes to the file that the user chose.
    mPath = mChosen;
  }
  return Folders().Replace(mHidden.string(), Resolved(mPath).string());
}

void PendingFile::Discard() {
  if (!IsOpen()) return;
  mFailed = true;
  Close();
}

}  // namespace quorvel
