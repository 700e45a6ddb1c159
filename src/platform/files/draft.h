#pragma once

#include <atomic>
#include <filesystem>
#include <mutex>
#include <string>
#include <string_view>

namespace quorvel {

class FileCalls;
class FolderCalls;

/// The open file into which a new text goes, until the text is on disk under its name or is given
/// up. `Write` and `Finish` may run, one after the other, in a thread that is not the event loop's;
/// other threads may call `Cancel`, `Percent` and `Failed` meanwhile. Nothing here touches a
/// `Text`.
class Draft {
 public:
  /// Owns the descriptor `file`, of the hidden file, or of the file itself when `hidden` is empty.
  Draft(std::filesystem::path hidden, int file);
  ~Draft() { GiveUp(); }
  Draft(const Draft&) = delete;
  Draft& operator=(const Draft&) = delete;

  /// Writes all of `bytes`. Puts each full piece on disk before the next piece, so that a cancel
  /// has never long to wait, and `Percent` is true. Reads no more of `bytes` once `Cancel` has
  /// returned. Does nothing after a failure.
  void Write(std::string_view bytes);
  /// Makes the text a new file `fresh`, or, when `fresh` is empty or another program has taken the
  /// path, the content of `file`, a path that is no link. On disk when this returns. After a
  /// failure the hidden file is deleted and the old file is whole.
  void Finish(const std::filesystem::path& fresh, const std::filesystem::path& file);
  /// Counts as a failure: the call under way ends soon and deletes the hidden file. Too late once
  /// `Finish` has renamed the hidden file.
  void Cancel();

  /// Closes the file, and deletes the hidden file unless the text is finished. Not while another
  /// thread writes.
  void GiveUp();

  [[nodiscard]] bool Failed() const { return mFailed; }
  /// How much of the last `Write` is done, from 0 to 100.
  [[nodiscard]] int Percent() const { return mPercent; }
  /// After `Finish`: whether the text is at the path `fresh`.
  [[nodiscard]] bool IsFresh() const { return mFresh; }

 private:
  bool TakePiece(std::string_view& bytes, std::string& piece);
  bool WritePiece(std::string_view piece);
  bool MoveHiddenFile(const std::filesystem::path& fresh, const std::filesystem::path& file);

  FileCalls& mFiles;
  FolderCalls& mFolders;
  std::filesystem::path mHidden;
  int mFile;
  bool mFresh = false;
  std::mutex mReading;  // held while the bytes of the caller of `Write` are read
  std::atomic<bool> mFailed = false;
  std::atomic<int> mPercent = 0;
};

}  // namespace quorvel
