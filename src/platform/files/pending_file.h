#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <memory>
#include <string_view>

namespace quorvel {

class Draft;

/// A new text for a file, from the opening of an output stream to its `Close`; shared by the
/// stream, which writes the text, and the item, which names the file.
///
/// The text goes into a hidden file beside the file that the path leads to, links followed. `Close`
/// renames the hidden file onto that file, so whatever happens before, the old file is whole. A
/// file that no other can replace (a pipe, a device, a file in a folder that takes no new one) is
/// emptied and written directly. Failure is null or false.
///
/// While the disk keeps `Write` or `Close` waiting, they deliver events and let the user cancel,
/// which counts as a failure. They raise nothing but the `EndException` of a quit meanwhile.
class PendingFile {
 public:
  /// Null, with the reason in `errno`, when the file cannot be written; an old file is then whole.
  [[nodiscard]] static std::shared_ptr<PendingFile> Open(const std::filesystem::path& path);

  /// Whether `Open`, and then a text of `bytes` bytes, would find an obstacle: an `errno`, 0 for
  /// none. Everything on the disk is as before. A pipe or a device is not opened.
  [[nodiscard]] static int Obstacle(const std::filesystem::path& path, int64_t bytes);

  /// For `Open`: `file` is a descriptor, owned from here on, of the hidden file, or of the file
  /// itself when `hidden` is empty.
  PendingFile(std::filesystem::path path, std::filesystem::path hidden, int file);
  PendingFile(const PendingFile&) = delete;
  PendingFile& operator=(const PendingFile&) = delete;

  /// The path that the file has, or gets by `Close`.
  [[nodiscard]] const std::filesystem::path& Path() const { return mPath; }
  /// From `Open` to `Close` or `Discard`.
  [[nodiscard]] bool IsOpen() const { return mDraft != nullptr; }
  /// Gives the file another path in the same folder: renames the old file, or, when there is none,
  /// lets `Close` create the file under that path. False, with nothing changed, when a file of
  /// that path exists.
  bool Rename(const std::filesystem::path& renamed);
  /// The caller keeps `bytes` until this returns. Does nothing once a write has failed.
  void Write(std::string_view bytes);
  /// Makes the text the file's content, on disk when this returns. After a failure the hidden file
  /// is deleted and the old file is whole.
  void Close();
  /// Forgets the text, unless it has been closed: the old file stays, or none.
  void Discard();
  /// Whether a write or the closing failed.
  [[nodiscard]] bool Failed() const { return mFailed; }

 private:
  [[nodiscard]] bool HasNoFileYet() const;
  void Do(std::function<void()> work);

  std::filesystem::path mPath;
  // The path that `Close` may replace: of the file that the user chose. `mPath` differs from it
  // only when `Rename` found no file to rename.
  std::filesystem::path mChosen;
  // Whether the text goes into a hidden file first.
  bool mReplaces;
  // Shared with the work under way. Null once the text is closed or discarded, or when cancelled
  // work hangs: that work then deletes the hidden file itself.
  std::shared_ptr<Draft> mDraft;
  bool mFailed = false;
};

}  // namespace quorvel
