// A library to preload: a kernel with stock limits grants no larger receive buffer than this.

#include <dlfcn.h>
#include <sys/socket.h>

#include <algorithm>

// NOLINTNEXTLINE(readability-inconsistent-declaration-parameter-name): the system's are reserved.
extern "C" int setsockopt(int socket, int level, int name, const void* value, socklen_t size) {
  constexpr int kMostBytes = 212992;
  static const auto real = reinterpret_cast<decltype(&setsockopt)>(dlsym(RTLD_NEXT, "setsockopt"));
  if (level != SOL_SOCKET || name != SO_RCVBUF) return real(socket, level, name, value, size);
  const int granted = std::min(*static_cast<const int*>(value), kMostBytes);
  return real(socket, level, name, &granted, sizeof granted);
}
