#pragma once

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <string_view>
#include <utility>

namespace quorvel {

/// How far a walk through the characters of a run of bytes has come.
struct Walk {
  std::string_view bytes;
  size_t index = 0;   ///< of the character at `offset`
  size_t offset = 0;  ///< in bytes
  /// The number of all characters; more than bytes when nobody has counted.
  size_t count = static_cast<size_t>(-1);
};

/// A run of bytes in a counted buffer: the storage beneath `Text`. The bytes of a value never
/// change, and move only when `Append` is called on the value or the value goes.
///
/// From 1 MiB on, a buffer lies in reserved memory (`native/reserved_memory.h`): a large value
/// grows without a copy and without a move, however many values share the buffer.
///
/// The buffer is counted by hand, with plain integers, for one thread only. A
/// `std::shared_ptr<std::string>` counts with atomic operations as soon as the process has had a
/// second thread, and then takes 2.4 times as long for a line appended to a text (measured).
class SharedBytes {
 public:
  SharedBytes() = default;
  SharedBytes(const SharedBytes& other) : mBuffer(other.mBuffer), mView(other.mView) {
    if (mBuffer != nullptr) ++mBuffer->references;
  }
  SharedBytes(SharedBytes&& other) noexcept
      : mBuffer(std::exchange(other.mBuffer, nullptr)), mView(std::exchange(other.mView, {})) {}
  SharedBytes& operator=(const SharedBytes& other) {
    if (this == &other) return *this;
    if (other.mBuffer != nullptr) ++other.mBuffer->references;
    Drop();
    mBuffer = other.mBuffer;
    mView = other.mView;
    return *this;
  }
  SharedBytes& operator=(SharedBytes&& other) noexcept {
    std::swap(mBuffer, other.mBuffer);
    std::swap(mView, other.mView);
    return *this;
  }
  ~SharedBytes() { Drop(); }

  /// A copy of `bytes` in a new buffer.
  static SharedBytes Copy(std::string_view bytes);
  /// A copy with `map(byte)` in the stead of each byte.
  template <class Map>
  static SharedBytes Mapped(std::string_view bytes, const Map& map) {
    if (bytes.empty()) return {};
    Buffer* const buffer = Make(bytes.size());
    std::transform(bytes.begin(), bytes.end(), buffer->Data(), map);
    buffer->used = bytes.size();
    return {buffer, {buffer->Data(), bytes.size()}};
  }

  [[nodiscard]] std::string_view View() const { return mView; }
  /// The last walk through the bytes of this value, or a new walk. The buffer keeps the last walk
  /// of all values that share the buffer. The value must not be empty.
  [[nodiscard]] Walk& LastWalk() const {
    Walk& last = mBuffer->last_walk;
    const bool same = last.bytes.data() == mView.data() && last.bytes.size() == mView.size();
    if (!same) last = {.bytes = mView};
    return last;
  }
  /// `length` bytes from `offset` (from 0) on, in the same buffer. The range must lie inside the
  /// bytes of this value.
  [[nodiscard]] SharedBytes Slice(size_t offset, size_t length) const {
    if (length == 0) return {};
    ++mBuffer->references;
    return {mBuffer, {mView.data() + offset, length}};
  }
  /// Adds `tail`, which may be a part of this value, to the end of this value, and changes no other
  /// value. When the bytes of this value end the used part of the buffer and the buffer has room,
  /// `tail` is written behind the used part, so a value that grows at the end costs the length of
  /// each `tail`, amortised. A `tail` that follows in the buffer already costs nothing. Else the
  /// value moves to a new buffer.
  void Append(std::string_view tail) {
    if (tail.empty()) return;
    if (mBuffer == nullptr || !TakesInPlace(tail)) return AppendToCopy(tail);
    mView = {mView.data(), mView.size() + tail.size()};
  }
  /// The same bytes, copied when the buffer keeps much more memory than twice their length.
  [[nodiscard]] SharedBytes Compact() const {
    return mBuffer == nullptr || mBuffer->used <= 2 * mView.size() + kSmallBuffer ? *this
                                                                                  : Copy(mView);
  }
  /// Whether both values begin at the same byte of the same buffer.
  [[nodiscard]] bool StartsWhere(const SharedBytes& other) const {
    return mBuffer == other.mBuffer && mView.data() == other.mView.data();
  }

 private:
  /// The head of a buffer; the bytes follow. A buffer takes at most one and a half times the memory
  /// of the used part.
  struct Buffer {
    size_t references = 1;
    size_t used = 0;
    size_t capacity = 0;
    Walk last_walk;

    char* Data() { return reinterpret_cast<char*>(this + 1); }
    char* End() { return Data() + used; }
    void Append(std::string_view bytes) {
      std::memcpy(End(), bytes.data(), bytes.size());
      used += bytes.size();
    }
  };
  // A join moves to a smaller buffer instead of using less than a quarter of the buffer, so that a
  // stream cut at the front does not keep the delivered bytes in memory. Small buffers are exempt.
  static constexpr size_t kSparse = 4;
  static constexpr size_t kSmallBuffer = 4096;
  static constexpr size_t kShort = 128;

  // A short text that lives for a moment, such as a line on its way, takes the memory of the last
  // such text.
  static Buffer* Make(size_t capacity) {
    if (capacity > kShort) return MakeInNewMemory(capacity);
    if (sSpare == nullptr) return MakeInNewMemory(kShort);
    Buffer* const buffer = std::exchange(sSpare, nullptr);
    buffer->references = 1;
    buffer->used = 0;
    buffer->last_walk.bytes = {};
    return buffer;
  }
  static void Free(Buffer* buffer) {
    if (buffer->capacity == kShort && sSpare == nullptr) {
      sSpare = buffer;
    } else {
      Release(buffer);
    }
  }
  void Drop() {
    if (mBuffer != nullptr && --mBuffer->references == 0) Free(mBuffer);
  }
  static Buffer* MakeInNewMemory(size_t capacity);
  static void Release(Buffer* buffer);
  SharedBytes(Buffer* adopted, std::string_view view) : mBuffer(adopted), mView(view) {}

  [[nodiscard]] bool TakesInPlace(std::string_view tail) {
    const char* const end = mView.data() + mView.size();
    if (end != mBuffer->End()) {
      return tail.data() == end && tail.data() + tail.size() <= mBuffer->End();
    }
    const size_t used = mBuffer->used + tail.size();
    const bool sparse = used > kSmallBuffer && mView.size() + tail.size() < used / kSparse;
    if (used > mBuffer->capacity || sparse) return false;
    mBuffer->Append(tail);
    return true;
  }
  void AppendToCopy(std::string_view tail);

  static inline Buffer* sSpare = nullptr;

  Buffer* mBuffer = nullptr;
  std::string_view mView;
};

}  // namespace quorvel
