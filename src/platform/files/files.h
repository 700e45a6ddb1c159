#pragma once

#include <cstdint>
#include <filesystem>
#include <string>

#include "platform/values/object.h"
#include "platform/values/text.h"

namespace quorvel {

/// Reads a text file piece by piece. Closes itself when its last reference goes.
class TextInputStream : public Object {
 public:
  /// Owns `file`, an open descriptor, from here on.
  explicit TextInputStream(int file) : mFile(file) {}
  ~TextInputStream() override;

  /// True when no more can be read; a read that fails ends the file. (The plain name is a macro of
  /// the C library.)
  [[nodiscard]] bool EOF_();
  /// The next line without its line end (LF, CR LF or CR), or the rest when none follows. The
  /// result bears the given mark; Nil is none.
  [[nodiscard]] Text ReadLine(std::nullptr_t encoding);
  [[nodiscard]] Text _ReadAll();

 private:
  bool Fill();

  int mFile;
  std::string mBuffer;
  size_t mNext = 0;
  bool mAtEnd = false;
};

/// Writes a text file. Closes itself when its last reference goes.
class TextOutputStream : public Object {
 public:
  /// Owns `file`, an open descriptor, from here on.
  explicit TextOutputStream(int file) : mFile(file) {}
  ~TextOutputStream() override;

  /// Writes the bytes with nothing added.
  void Write(const Text& text);
  /// Ends the file; what was written is on disk when this returns.
  void Close();
  /// Whether a write has failed since the stream was made.
  [[nodiscard]] bool WriteError() const { return mFailed; }

 private:
  int mFile;
  bool mFailed = false;
};

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

/// A kind of file that save dialogs offer. Registered by its first conversion to a text.
class FileType : public Object {
 public:
  [[nodiscard]] const quorvel::Text& Name() const { return mName; }
  void Name(const quorvel::Text& name) { mName = name; }
  [[nodiscard]] const quorvel::Text& MacCreator() const { return mMacCreator; }
  void MacCreator(const quorvel::Text& creator) { mMacCreator = creator; }
  [[nodiscard]] const quorvel::Text& MacType() const { return mMacType; }
  void MacType(const quorvel::Text& type) { mMacType = type; }
  [[nodiscard]] const quorvel::Text& Extensions() const { return mExtensions; }
  void Extensions(const quorvel::Text& extensions) { mExtensions = extensions; }

  void Register();
  void Deregister();
  /// Registers the type, then yields its name.
  [[nodiscard]] quorvel::Text ToText();

 private:
  quorvel::Text mName;
  quorvel::Text mMacCreator;
  quorvel::Text mMacType;
  quorvel::Text mExtensions;
  bool mRegistered = false;
};

/// The item of a bare name in `Quorvel` in the user's documents folder (path type 0, the only
/// one), whether it exists or not; Nil for what is no bare name.
[[nodiscard]] Ref<FolderItem> GetFolderItem(const Text& name, int32_t path_type);

/// Asks the user where to save; `file_type` is the name of a registered type. Nil when the user
/// cancels. Starts in the default folder, which is made if need be, or in the folder last used.
[[nodiscard]] Ref<FolderItem> GetSaveFolderItem(const Text& file_type, const Text& default_name);

}  // namespace quorvel
