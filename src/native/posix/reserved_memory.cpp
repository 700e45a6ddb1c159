#include "native/reserved_memory.h"

#include <sys/mman.h>

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <limits>

namespace quorvel {

#if defined(MAP_NORESERVE) && defined(MAP_ANONYMOUS)

namespace {

constexpr size_t kMost = std::numeric_limits<uint32_t>::max();

std::span<char> Map(size_t size) {
  void* const room = mmap(nullptr, size, PROT_READ | PROT_WRITE,
                          MAP_PRIVATE | MAP_ANONYMOUS | MAP_NORESERVE, -1, 0);
  if (room == MAP_FAILED) return {};
  return {static_cast<char*>(room), size};
}

}  // namespace

// A system that counts addresses as memory, or limits a process's addresses, may refuse the most.
std::span<char> ReserveMemory(size_t least) {
  for (size_t size = kMost; size > least; size /= 2) {
    if (const auto room = Map(size); !room.empty()) return room;
  }
  return Map(least);
}

void ReleaseMemory(std::span<char> room) { munmap(room.data(), room.size()); }

#else

std::span<char> ReserveMemory(size_t least) {
  auto* const room = static_cast<char*>(std::malloc(least));
  return {room, room == nullptr ? 0 : least};
}

void ReleaseMemory(std::span<char> room) { std::free(room.data()); }

#endif

}  // namespace quorvel
