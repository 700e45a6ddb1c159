#include "platform/values/shared_bytes.h"

#include <algorithm>
#include <cstdlib>
#include <new>
#include <span>

#include "native/reserved_memory.h"

namespace quorvel {

namespace {

// The size of the smallest buffer in reserved memory.
constexpr size_t kReserved = size_t{1} << 20;

std::span<char> Room(size_t size) {
  if (size >= kReserved) return ReserveMemory(size);
  auto* const room = static_cast<char*>(std::malloc(size));
  return {room, room == nullptr ? 0 : size};
}

}  // namespace

SharedBytes::Buffer* SharedBytes::MakeInNewMemory(size_t capacity) {
  const auto room = Room(sizeof(Buffer) + capacity);
  if (room.empty()) throw std::bad_alloc();
  auto* const buffer = new (room.data()) Buffer;
  buffer->capacity = room.size() - sizeof(Buffer);
  return buffer;
}

void SharedBytes::Release(Buffer* buffer) {
  const size_t size = sizeof(Buffer) + buffer->capacity;
  if (size < kReserved) {
    std::free(buffer);
  } else {
    ReleaseMemory({reinterpret_cast<char*>(buffer), size});
  }
}

SharedBytes SharedBytes::Copy(std::string_view bytes) {
  if (bytes.empty()) return {};
  Buffer* const buffer = Make(bytes.size());
  buffer->Append(bytes);
  return {buffer, {buffer->Data(), bytes.size()}};
}

void SharedBytes::AppendToCopy(std::string_view tail) {
  if (mBuffer == nullptr) {
    *this = Copy(tail);
    return;
  }
  const size_t size = mView.size() + tail.size();
  Buffer* const buffer = Make(size + std::max<size_t>(size / 2, 64));
  buffer->Append(mView);
  buffer->Append(tail);
  *this = {buffer, {buffer->Data(), size}};
}

}  // namespace quorvel
