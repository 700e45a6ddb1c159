#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#ifdef __APPLE__
#include <sys/xattr.h>
#endif

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdio>

#include "native/system_calls.h"

namespace quorvel {

namespace {

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

// A second name can only be given where there is no file yet; the old name goes afterwards.
bool RenameByLink(const char* from, const char* to) {
  return link(from, to) == 0 && unlink(from) == 0;
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

class Posix final : public FileCalls {
 public:
  bool Exists(const std::string& path) override {
    struct stat status {};
    return stat(path.c_str(), &status) == 0;
  }

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

  int Create(const std::string& path) override {
    return open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0666);
  }

  bool MakeFolder(const std::string& path) override { return mkdir(path.c_str(), 0777) == 0; }

  int64_t Read(int file, std::span<char> into) override {
    return Retried([&] { return read(file, into.data(), into.size()); });
  }

  int64_t Write(int file, std::string_view bytes) override {
    return Retried([&] { return write(file, bytes.data(), bytes.size()); });
  }

  bool Sync(int file) override { return fsync(file) == 0; }
  void Close(int file) override { close(file); }

  bool RenameToNew(const std::string& from, const std::string& to) override {
    if (RenameAtOnce(from.c_str(), to.c_str())) return true;
    const bool unknown_here = errno == ENOSYS || errno == EINVAL || errno == ENOTSUP;
    return unknown_here && RenameByLink(from.c_str(), to.c_str());
  }

  bool SetFinderInfo(const std::string& path, std::string_view type,
                     std::string_view creator) override {
    return WriteFinderInfo(path, type, creator);
  }

 private:
  template <class Call>
  static int64_t Retried(Call call) {
    while (true) {
      const auto result = call();
      if (result >= 0 || errno != EINTR) return result;
    }
  }
};

}  // namespace

FileCalls& PosixFileCalls() {
  static Posix calls;
  return calls;
}

}  // namespace quorvel
