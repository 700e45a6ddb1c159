#include "platform/values/shared_bytes.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <new>
#include <utility>

namespace quorvel {

namespace {
// A join moves to a smaller buffer instead of using less than a quarter of the buffer, so that a
// stream cut at the front does not keep the delivered bytes in memory. Small buffers are exempt.
constexpr size_t kSparse = 4;
constexpr size_t kSmallBuffer = 4096;

// The capacity of a buffer for a value of `size` bytes that is to grow.
size_t Roomy(size_t size) { return size + std::max<size_t>(size / 2, 64); }
}  // namespace

SharedBytes::Buffer* SharedBytes::Make(size_t capacity) {
  void* const memory = std::malloc(sizeof(Buffer) + capacity);
  if (memory == nullptr) throw std::bad_alloc();
  auto* buffer = new (memory) Buffer;
  buffer->capacity = capacity;
  return buffer;
}

// The buffer's first bytes in a buffer of another size. The old buffer stays when memory is short.
SharedBytes::Buffer* SharedBytes::Resized(Buffer* buffer, size_t capacity) {
  void* const memory = std::realloc(buffer, sizeof(Buffer) + capacity);
  if (memory == nullptr) throw std::bad_alloc();
  auto* const resized = static_cast<Buffer*>(memory);
  resized->capacity = capacity;
  return resized;
}

void SharedBytes::Free(Buffer* buffer) { std::free(buffer); }

std::string_view SharedBytes::Buffer::Append(std::string_view bytes) {
  char* const start = Data() + used;
  std::memcpy(start, bytes.data(), bytes.size());
  used += bytes.size();
  return {start, bytes.size()};
}

SharedBytes SharedBytes::Copy(std::string_view bytes) {
  if (bytes.empty()) return {};
  Buffer* const buffer = Make(bytes.size());
  return {buffer, buffer->Append(bytes)};
}

SharedBytes SharedBytes::Mapped(std::string_view bytes, const ByteTable& table) {
  SharedBytes mapped = Copy(bytes);
  if (bytes.empty()) return mapped;
  char* const start = mapped.mBuffer->Data();
  std::transform(start, start + bytes.size(), start,
                 [&table](char byte) { return table[static_cast<unsigned char>(byte)]; });
  return mapped;
}

SharedBytes SharedBytes::Slice(size_t offset, size_t length) const {
  if (length == 0) return {};
  ++mBuffer->references;
  return {mBuffer, mView.substr(offset, length)};
}

bool SharedBytes::HasRoomFor(size_t tail) const {
  const bool at_end = mView.data() + mView.size() == mBuffer->Data() + mBuffer->used;
  const bool fits = mBuffer->capacity - mBuffer->used >= tail;
  const bool sparse =
      mBuffer->capacity > kSmallBuffer && mView.size() + tail < mBuffer->capacity / kSparse;
  return at_end && fits && !sparse;
}

void SharedBytes::Append(std::string_view tail) {
  if (tail.empty()) return;
  const size_t size = mView.size() + tail.size();
  if (mBuffer == nullptr) {
    *this = Copy(tail);
  } else if (HasRoomFor(tail.size())) {
    mBuffer->Append(tail);
    mView = {mView.data(), size};
  } else if (mBuffer->references > 1) {
    Buffer* const buffer = Make(Roomy(size));
    const char* const start = buffer->Append(mView).data();
    buffer->Append(tail);
    *this = {buffer, {start, size}};
  } else {
    std::memmove(mBuffer->Data(), mView.data(), mView.size());
    mBuffer->used = mView.size();
    mView = {mBuffer->Data(), mBuffer->used};
    mBuffer = Resized(mBuffer, Roomy(size));
    mBuffer->Append(tail);
    mView = {mBuffer->Data(), size};
  }
}

SharedBytes SharedBytes::Compact() const {
  const bool dense = mBuffer == nullptr || mBuffer->capacity <= 2 * mView.size() + kSmallBuffer;
  return dense ? *this : Copy(mView);
}

}  // namespace quorvel
