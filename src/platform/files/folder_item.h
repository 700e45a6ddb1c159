#pragma once

#include <cstdint>
#include <filesystem>
#include <memory>
#include <utility>

#include "platform/values/object.h"
#include "platform/values/text.h"

namespace quorvel {

class PendingFile;
class TextInputStream;
class TextOutputStream;

/// A file by its path, whether it exists or not. Failures are Nil or no effect, never raised.
class FolderItem : public Object {
 public:
  explicit FolderItem(std::filesystem::path path) : mPath(std::move(path)) {}

  /// A file whose output stream is still open exists.
  [[nodiscard]] bool Exists() const;
  [[nodiscard]] Text Name() const;
  /// Renames the file, also while an output stream on it is open: the stream's text then goes to
  /// the new name. Refused when a file of the name exists, or the name is no bare file name: file
  /// and object then keep the old name.
  void Name(const Text& name);
  [[nodiscard]] Ref<TextInputStream> OpenAsTextFile() const;
  /// A stream for a new text, which replaces an old file when the stream is closed (see
  /// `PendingFile`). Makes the default folder if need be. Nil, with the reason in `errno`, when the
  /// file cannot be written.
  [[nodiscard]] Ref<TextOutputStream> CreateTextFile();

  /// Four-character codes: the file's Finder information on macOS, kept in the object elsewhere.
  [[nodiscard]] const Text& MacCreator() const { return mMacCreator; }
  void MacCreator(const Text& creator);
  [[nodiscard]] const Text& MacType() const { return mMacType; }
  void MacType(const Text& type);

 private:
  [[nodiscard]] const std::filesystem::path& Path() const;
  void WriteFinderInfo() const;

  std::filesystem::path mPath;
  // The file of the last output stream, which then knows the path; null before the first stream.
  std::shared_ptr<PendingFile> mPending;
  Text mMacCreator;
  Text mMacType;
};

/// The folder of the files with bare names: `Quorvel` in the user's documents folder. The folder
/// need not exist.
[[nodiscard]] std::filesystem::path DefaultFolder();

/// The item of a bare name in the default folder (path type 0, the only type), whether the file
/// exists or not; Nil for a text that is no bare name.
[[nodiscard]] Ref<FolderItem> GetFolderItem(const Text& name, int32_t path_type);

/// Asks the user where to save; `file_type` is the name of a registered type. Nil when the user
/// cancels. Starts in the default folder, made if need be, or in the folder last used. Files of
/// every kind are shown when `default_name` has not the ending of the type. Where a text of `bytes`
/// bytes cannot be saved, a message tells why and the user is asked again.
[[nodiscard]] Ref<FolderItem> GetSaveFolderItem(const Text& file_type, const Text& default_name,
                                                int64_t bytes = 0);

}  // namespace quorvel
