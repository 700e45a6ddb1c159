#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace quorvel {

/// The calls on open files that the program makes of the operating system, one small function each.
/// A file is the number of a descriptor; whoever opens a file closes it. Paths are in the system's
/// own encoding. Failure is -1 or false, with the reason in `errno`.
class FileCalls {
 public:
  virtual ~FileCalls() = default;
  /// Opens a regular file; anything else fails, and never waits for a writer.
  virtual int OpenToRead(const std::string& path) = 0;
  /// Opens a file of any kind that exists, with its content left as it is. Never waits: a pipe
  /// without a reader fails with ENXIO. Later writes wait as usual.
  virtual int OpenToWrite(const std::string& path) = 0;
  /// Creates an empty file for writing, with the permissions, and as far as the system allows the
  /// owner and the group, of the open file `like`; with the user's defaults when `like` is -1.
  /// Fails with EEXIST when the path is taken, by a link without a target as well.
  virtual int CreateNew(const std::string& path, int like) = 0;
  /// Whether the user may give the name of `file`, in `folder`, to another file: `file` is a
  /// regular file, and no sticky folder keeps the file for another owner.
  virtual bool IsReplaceable(int file, const std::string& folder) = 0;
  /// The most bytes that `file` can hold: the bytes that the file takes up on its disk, and those
  /// that the disk leaves to the user. The largest number when the disk does not tell.
  virtual int64_t Room(int file) = 0;
  /// Cuts a regular file down to no bytes; any other kind of file has no content to lose.
  virtual bool Empty(int file) = 0;
  /// The number of bytes read, 0 at the end.
  virtual int64_t Read(int file, std::span<char> into) = 0;
  /// The number of bytes written, at least 1. A pipe without a reader fails with EPIPE.
  virtual int64_t Write(int file, std::string_view bytes) = 0;
  /// Returns when the written bytes are on disk; pipes and devices have nothing to wait for.
  virtual bool Sync(int file) = 0;
  virtual void Close(int file) = 0;
};

/// The calls on names of files that the program makes, with paths and failures as in `FileCalls`.
class FolderCalls {
 public:
  virtual ~FolderCalls() = default;
  /// Whether the path leads to a file of any kind, links followed.
  virtual bool Exists(const std::string& path) = 0;
  /// Whether a file of that path could be made: nothing bears the name, not even a link without a
  /// target, and the name is no longer than the system allows.
  virtual bool IsFree(const std::string& path) = 0;
  /// Whether the path leads to a pipe or a device, of which the other end notices each opening.
  virtual bool IsPipeOrDevice(const std::string& path) = 0;
  /// Whether the user has the permission to write to the file that the path leads to.
  virtual bool IsWritable(const std::string& path) = 0;
  /// The path that a symbolic link holds; empty when `path` is no link.
  virtual std::string LinkTarget(const std::string& path) = 0;
  virtual bool MakeFolder(const std::string& path) = 0;
  /// Renames a file, or a link itself. Fails with EEXIST, and changes nothing, when `to` exists.
  virtual bool RenameToNew(const std::string& from, const std::string& to) = 0;
  /// Renames a file; a file `to` is gone at the same instant, and untouched on failure.
  virtual bool Replace(const std::string& from, const std::string& to) = 0;
  virtual bool Remove(const std::string& path) = 0;
  /// Returns when the names in the folder are on disk, where the system can do so.
  virtual void SyncFolder(const std::string& path) = 0;
  /// Gives the file its four-character type and creator where the system keeps such codes (macOS);
  /// does nothing, and succeeds, elsewhere.
  virtual bool SetFinderInfo(const std::string& path, std::string_view type,
                             std::string_view creator) = 0;
};

/// The calls of this system.
[[nodiscard]] FileCalls& PosixFileCalls();
[[nodiscard]] FolderCalls& PosixFolderCalls();

}  // namespace quorvel
