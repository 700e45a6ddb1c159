#pragma once

#include <cstddef>
#include <span>

namespace quorvel {

/// Room for bytes that are to grow without a move: at least `least` bytes, and up to 4 GiB of
/// addresses where the system gives addresses without memory. A page takes memory once the page is
/// written. Empty when the system is out of memory. The caller gives the room back whole by
/// `ReleaseMemory`. Any thread may call.
[[nodiscard]] std::span<char> ReserveMemory(size_t least);
void ReleaseMemory(std::span<char> room);

}  // namespace quorvel
