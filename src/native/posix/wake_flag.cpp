#include "native/wake_flag.h"

#include <fcntl.h>
#include <unistd.h>

#include <array>
#include <cstdint>

#ifdef __linux__
#include <sys/eventfd.h>
#endif

namespace quorvel {

#ifdef __linux__

WakeFlag::WakeFlag() : mReadEnd(eventfd(0, EFD_NONBLOCK | EFD_CLOEXEC)), mWriteEnd(mReadEnd) {}

#else

WakeFlag::WakeFlag() {
  std::array<int, 2> ends{};
  if (pipe(ends.data()) != 0) return;
  for (const int end : ends) {
    fcntl(end, F_SETFL, O_NONBLOCK);
    fcntl(end, F_SETFD, FD_CLOEXEC);
  }
  mReadEnd = ends[0];
  mWriteEnd = ends[1];
}

#endif

WakeFlag::~WakeFlag() {
  if (mWriteEnd != mReadEnd) close(mWriteEnd);
  if (mReadEnd >= 0) close(mReadEnd);
}

// A counter of 8 bytes on Linux, 8 bytes in a pipe elsewhere. A pipe that is full is readable.
void WakeFlag::Set() const {
  const uint64_t one = 1;
  [[maybe_unused]] const ssize_t written = write(mWriteEnd, &one, sizeof one);
}

void WakeFlag::Clear() const {
  std::array<uint64_t, 64> taken{};
  while (read(mReadEnd, taken.data(), sizeof taken) == static_cast<ssize_t>(sizeof taken)) continue;
}

}  // namespace quorvel
