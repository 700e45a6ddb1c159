#include <fcntl.h>
#include <sys/stat.h>
#include <sys/statvfs.h>
#include <unistd.h>
#ifdef __APPLE__
#include <sys/xattr.h>
#endif

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <limits>

#include "native/system_calls.h"

namespace quorvel {

namespace {

constexpr mode_t kPermissions = S_IRWXU | S_IRWXG | S_IRWXO;
constexpr mode_t kDefaultPermissions = 0666;  // less the user's own mask

#if defined(__linux__) && defined(RENAME_NOREPLACE)
bool RenameAtOnce(const char* from, const char* to) {
  return renameat2(AT_FDCWD, from, AT_FDCWD, to, RENAME_NOREPLACE) == 0;
}
#elif defined(__APPLE__)
bool RenameAtOnce(const char* from, const char* to) {
  return renamex_np(from, to, RENAME_EXCL) == 0;
}
#else
bool RenameAtOnce(const char*, const char*) {
  errno = ENOSYS;
  return false;
}
#endif

// A second name can only be given to a file where no file bears that name; the old name goes
// afterwards.
bool RenameByLink(const char* from, const char* to) {
  return linkat(AT_FDCWD, from, AT_FDCWD, to, 0) == 0 && unlink(from) == 0;
}

bool IsUnsupportedHere(int error) {
  return error == ENOSYS || error == EINVAL || error == ENOTSUP || error == EPERM;
}

template <class Call>
auto Retried(Call call) {
  while (true) {
    const auto result = call();
    if (result >= 0 || errno != EINTR) return result;
  }
}

#ifdef __APPLE__
bool WriteFinderInfo(const std::string& path, std::string_view type, std::string_view creator) {
  constexpr const char* kAttribute = "com.apple.FinderInfo";
  std::array<char, 32> info{};
  getxattr(path.c_str(), kAttribute, info.data(), info.size(), 0, 0);
  std::copy_n(type.begin(), std::min<size_t>(type.size(), 4), info.begin());
  std::copy_n(creator.begin(), std::min<size_t>(creator.size(), 4), info.begin() + 4);
  return setxattr(path.c_str(), kAttribute, info.data(), info.size(), 0, 0) == 0;
}
#else
bool WriteFinderInfo(const std::string&, std::string_view, std::string_view) { return true; }
#endif

void CopyOwnerAndPermissions(int file, const struct stat& from) {
  // Only root gives a file away; the group may still be one of the user's own groups.
  [[maybe_unused]] const bool owned = fchown(file, from.st_uid, from.st_gid) == 0 ||
                                      fchown(file, static_cast<uid_t>(-1), from.st_gid) == 0;
  fchmod(file, from.st_mode & kPermissions);
}

class PosixFiles final : public FileCalls {
 public:
  // A pipe whose reader has gone is a failed write and must not end the program.
  PosixFiles() { std::signal(SIGPIPE, SIG_IGN); }

  int OpenToRead(const std::string& path) override {
    const int file = open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
    struct stat status {};
    if (file >= 0 && fstat(file, &status) == 0 && !S_ISREG(status.st_mode)) {
      close(file);
      errno = EISDIR;
      return -1;
    }
    return file;
  }

  int OpenToWrite(const std::string& path) override {
    const int file = open(path.c_str(), O_WRONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY);
    if (file >= 0) fcntl(file, F_SETFL, 0);
    return file;
  }

  int CreateNew(const std::string& path, int like) override {
    struct stat old {};
    const bool known = like >= 0 && fstat(like, &old) == 0;
    // Nobody else reads the file before its owner is settled.
    const mode_t mode = known ? old.st_mode & S_IRWXU : kDefaultPermissions;
    const int file = open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, mode);
    if (file >= 0 && known) CopyOwnerAndPermissions(file, old);
    return file;
  }

  bool IsReplaceable(int file, const std::string& folder) override {
    struct stat old {};
    struct stat around {};
    if (fstat(file, &old) != 0 || !S_ISREG(old.st_mode)) return false;
    if (stat(folder.c_str(), &around) != 0 || (around.st_mode & S_ISVTX) == 0) return true;
    const uid_t user = geteuid();
    return user == 0 || user == old.st_uid || user == around.st_uid;
  }

  int64_t Room(int file) override {
    constexpr int64_t kNoLimit = std::numeric_limits<int64_t>::max();
    constexpr uint64_t kMost = kNoLimit / 2;
    constexpr int64_t kUnitOfOwn = 512;
    struct statvfs disk {};
    struct stat own {};
    if (fstatvfs(file, &disk) != 0 || fstat(file, &own) != 0) return kNoLimit;
    if (disk.f_blocks == 0 || disk.f_frsize == 0) return kNoLimit;  // as some network disks tell
    const uint64_t units = std::min<uint64_t>(disk.f_bavail, kMost / disk.f_frsize);
    return static_cast<int64_t>(units * disk.f_frsize) + own.st_blocks * kUnitOfOwn;
  }

  bool Empty(int file) override { return ftruncate(file, 0) == 0 || errno == EINVAL; }

  int64_t Read(int file, std::span<char> into) override {
    return Retried([&] { return read(file, into.data(), into.size()); });
  }

  int64_t Write(int file, std::string_view bytes) override {
    return Retried([&] { return write(file, bytes.data(), bytes.size()); });
  }

  bool Sync(int file) override {
    return Retried([&] { return fsync(file); }) == 0 || errno == EINVAL || errno == ENOTSUP;
  }

  void Close(int file) override { close(file); }
};

class PosixFolders final : public FolderCalls {
 public:
  bool Exists(const std::string& path) override {
    struct stat status {};
    return stat(path.c_str(), &status) == 0;
  }

  bool IsFree(const std::string& path) override {
    struct stat status {};
    return lstat(path.c_str(), &status) != 0 && errno == ENOENT;
  }

  bool IsPipeOrDevice(const std::string& path) override {
    struct stat status {};
    if (stat(path.c_str(), &status) != 0) return false;
    return S_ISFIFO(status.st_mode) || S_ISCHR(status.st_mode) || S_ISBLK(status.st_mode);
  }

  bool IsWritable(const std::string& path) override {
    return faccessat(AT_FDCWD, path.c_str(), W_OK, AT_EACCESS) == 0;
  }

  std::string LinkTarget(const std::string& path) override {
    std::array<char, 4096> target{};
    const auto length = readlink(path.c_str(), target.data(), target.size());
    return {target.data(), length < 0 ? 0 : static_cast<size_t>(length)};
  }

  bool MakeFolder(const std::string& path) override { return mkdir(path.c_str(), 0777) == 0; }

  bool RenameToNew(const std::string& from, const std::string& to) override {
    if (RenameAtOnce(from.c_str(), to.c_str())) return true;
    if (!IsUnsupportedHere(errno)) return false;
    if (RenameByLink(from.c_str(), to.c_str())) return true;
    // A file system without links: nothing better is left than to look first.
    return IsUnsupportedHere(errno) && IsFree(to) && Replace(from, to);
  }

  bool Replace(const std::string& from, const std::string& to) override {
    return std::rename(from.c_str(), to.c_str()) == 0;
  }

  bool Remove(const std::string& path) override { return unlink(path.c_str()) == 0; }

  void SyncFolder(const std::string& path) override {
    const int folder = open(path.c_str(), O_RDONLY | O_CLOEXEC | O_DIRECTORY);
    if (folder < 0) return;
    fsync(folder);
    close(folder);
  }

  bool SetFinderInfo(const std::string& path, std::string_view type,
                     std::string_view creator) override {
    return WriteFinderInfo(path, type, creator);
  }
};

}  // namespace

// A thread that a dead disk holds up may still use these when the process ends, so they are never
// destroyed.
FileCalls& PosixFileCalls() {
  static auto* const calls = new PosixFiles;
  return *calls;
}

FolderCalls& PosixFolderCalls() {
  static auto* const calls = new PosixFolders;
  return *calls;
}

}  // namespace quorvel
