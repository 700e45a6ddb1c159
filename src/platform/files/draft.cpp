#include "platform/files/draft.h"

#include <cstddef>
#include <utility>

#include "native/native.h"
#include "platform/runtime/runtime.h"

namespace quorvel {

namespace {

constexpr size_t kPiece = 4194304;
constexpr size_t kAll = 100;

}  // namespace

Draft::Draft(std::filesystem::path hidden, int file)
    : mFiles(Native().Files()),
      mFolders(Native().Folders()),
      mHidden(std::move(hidden)),
      mFile(file) {}

void Draft::Write(std::string_view bytes) {
  const size_t total = bytes.size();
  std::string piece;
  while (TakePiece(bytes, piece)) {
    if (!WritePiece(piece)) mFailed = true;
    mPercent = static_cast<int>(kAll * (total - bytes.size()) / total);
  }
  if (mFailed) GiveUp();
}

bool Draft::TakePiece(std::string_view& bytes, std::string& piece) {
  const std::lock_guard reading(mReading);
  if (mFailed) return false;
  piece = bytes.substr(0, kPiece);
  bytes.remove_prefix(piece.size());
  return !piece.empty();
}

bool Draft::WritePiece(std::string_view piece) {
  const bool full = piece.size() == kPiece;
  while (!piece.empty()) {
    const auto count = mFiles.Write(mFile, piece);
    if (count <= 0) return false;
    piece.remove_prefix(static_cast<size_t>(count));
  }
  return !full || mFiles.Sync(mFile);
}

void Draft::Finish(const std::filesystem::path& fresh, const std::filesystem::path& file) {
  if (!mFailed && !mFiles.Sync(mFile)) mFailed = true;
  if (!mFailed && !MoveHiddenFile(fresh, file)) mFailed = true;
  GiveUp();
}

bool Draft::MoveHiddenFile(const std::filesystem::path& fresh, const std::filesystem::path& file) {
  if (mHidden.empty()) return true;
  mFresh = !fresh.empty() && mFolders.RenameToNew(mHidden.string(), fresh.string());
  if (!mFresh && !mFolders.Replace(mHidden.string(), file.string())) return false;
  mFolders.SyncFolder(std::exchange(mHidden, {}).parent_path().string());
  return true;
}

void Draft::Cancel() {
  const std::lock_guard reading(mReading);
  mFailed = true;
}

void Draft::GiveUp() {
  if (mFile >= 0) mFiles.Close(std::exchange(mFile, -1));
  if (!mHidden.empty()) mFolders.Remove(std::exchange(mHidden, {}).string());
}

}  // namespace quorvel
