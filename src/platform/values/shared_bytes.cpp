#include "platform/values/shared_bytes.h"

#include <algorithm>
#include <cstring>
#include <memory>
#include <new>
#include <utility>

namespace quorvel {

namespace {
// A join moves to a smaller buffer instead of using less than a quarter of the buffer, so that a
// stream cut at the front does not keep the delivered bytes in memory. Small buffers are exempt.
constexpr size_t kSparse = 4;
constexpr size_t kSmallBuffer = 4096;
}  // namespace

struct SharedBytes::Buffer {
  size_t references = 1;
  size_t used = 0;
  size_t capacity = 0;

  char* Data() { return reinterpret_cast<char*>(this + 1); }

  static Buffer* Make(size_t capacity) {
    auto* buffer = new (::operator new(sizeof(Buffer) + capacity)) Buffer;
    buffer->capacity = capacity;
    return buffer;
  }
  static void Release(Buffer* buffer) {
    if (buffer != nullptr && --buffer->references == 0) ::operator delete(buffer);
  }
  std::string_view Append(std::string_view bytes) {
    char* const start = Data() + used;
    std::memcpy(start, bytes.data(), bytes.size());
    used += bytes.size();
    return {start, bytes.size()};
  }
};

SharedBytes::SharedBytes(const SharedBytes& other) : mBuffer(other.mBuffer), mView(other.mView) {
  if (mBuffer != nullptr) ++mBuffer->references;
}

SharedBytes::SharedBytes(SharedBytes&& other) noexcept
    : mBuffer(std::exchange(other.mBuffer, nullptr)), mView(std::exchange(other.mView, {})) {}

SharedBytes& SharedBytes::operator=(SharedBytes other) noexcept {
  std::swap(mBuffer, other.mBuffer);
  std::swap(mView, other.mView);
  return *this;
}

SharedBytes::~SharedBytes() { Buffer::Release(mBuffer); }

SharedBytes SharedBytes::Copy(std::string_view bytes) {
  if (bytes.empty()) return {};
  Buffer* const buffer = Buffer::Make(bytes.size());
  return {buffer, buffer->Append(bytes)};
}

SharedBytes SharedBytes::Slice(size_t offset, size_t length) const {
  if (length == 0) return {};
  ++mBuffer->references;
  return {mBuffer, mView.substr(offset, length)};
}

SharedBytes SharedBytes::Joined(std::string_view tail) const {
  if (tail.empty()) return *this;
  if (mView.empty()) return Copy(tail);
  const size_t size = mView.size() + tail.size();
  const bool at_end = mView.data() + mView.size() == mBuffer->Data() + mBuffer->used;
  const bool fits = mBuffer->capacity - mBuffer->used >= tail.size();
  const bool sparse = mBuffer->capacity > kSmallBuffer && size < mBuffer->capacity / kSparse;
  if (at_end && fits && !sparse) {
    mBuffer->Append(tail);
    ++mBuffer->references;
    return {mBuffer, {mView.data(), size}};
  }
  Buffer* const buffer = Buffer::Make(size + std::max<size_t>(size / 2, 64));
  const char* const start = buffer->Append(mView).data();
  buffer->Append(tail);
  return {buffer, {start, size}};
}

}  // namespace quorvel
