#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>

#include "platform/system_calls.h"

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
