#pragma once

#include <cstdint>
#include <filesystem>
#include <utility>

#include "platform/values/object.h"
#include "platform/values/text.h"

namespace quorvel {

class TextInputStream;
class TextOutputStream;

/// A file by its place, whether it exists or not. Failures are Nil or no effect, never raised.
class FolderItem : public Object {
 public:
  explicit FolderItem(std::filesystem::path path) : mPath(std::move(path)) {}

  [[nodiscard]] bool Exists() const;
  [[nodiscard]] Text Name() const;
  /// Renames the file on disk, also while a stream on it is open. Refused when a file of that
  /// name exists or the name is none: file and object then keep the old one.
  void Name(const Text& name);
  [[nodiscard]] Ref<TextInputStream> OpenAsTextFile() const;
  /// Creates the file, empty, replacing one of that name; makes its folder if need be.
  [[nodiscard]] Ref<TextOutputStream> CreateTextFile() const;

  /// Four-character codes: the file's Finder information on macOS, kept in this object elsewhere.
  [[nodiscard]] const Text& MacCreator() const { return mMacCreator; }
  void MacCreator(const Text& creator);
  [[nodiscard]] const Text& MacType() const { return mMacType; }
  void MacType(const Text& type);

 private:
  std::filesystem::path mPath;
  Text mMacCreator;
  Text mMacType;
};

/// The item of a bare name in `Quorvel` in the user's documents folder (path type 0, the only
/// one), whether it exists or not; Nil for what is no bare name.
[[nodiscard]] Ref<FolderItem> GetFolderItem(const Text& name, int32_t path_type);

/// Asks the user where to save; `file_type` is the name of a registered type. Nil when the user
/// cancels. Starts in the default folder, which is made if need be, or in the folder last used.
[[nodiscard]] Ref<FolderItem> GetSaveFolderItem(const Text& file_type, const Text& default_name);

}  // namespace quorvel
