#pragma once

#include <array>
#include <cstddef>
#include <string_view>
#include <utility>

namespace quorvel {

/// A byte for each of the 256 bytes.
using ByteTable = std::array<char, 256>;

/// A run of bytes in a counted buffer: the storage beneath `Text`. The bytes of a value never
/// change, and move only when `Append` is called on the value or the value goes.
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
  SharedBytes& operator=(SharedBytes other) noexcept {
    std::swap(mBuffer, other.mBuffer);
    std::swap(mView, other.mView);
    return *this;
  }
  ~SharedBytes() {
    if (mBuffer != nullptr && --mBuffer->references == 0) Free(mBuffer);
  }

  /// A copy of `bytes` in a new buffer.
  static SharedBytes Copy(std::string_view bytes);
  /// A copy in which `table` gives the byte in the stead of each byte.
  static SharedBytes Mapped(std::string_view bytes, const ByteTable& table);

  [[nodiscard]] std::string_view View() const { return mView; }
  /// `length` bytes from `offset` (from 0) on, in the same buffer. The range must lie inside the
  /// bytes of this value.
  [[nodiscard]] SharedBytes Slice(size_t offset, size_t length) const;
  /// Adds `tail` to the end of this value, and changes no other value. When the bytes of this value
  /// end the used part of the buffer and the buffer has room, `tail` is written behind the used
  /// part, so a value that grows at the end costs the length of each `tail`, amortised. Else room
  /// is made: in place when no other value shares the buffer, so that a growing value never has its
  /// bytes twice in memory where the system's allocator can move pages; `tail` must not be a part
  /// of such a value. A shared value moves to a new buffer.
  void Append(std::string_view tail);
  /// The same bytes, copied when the buffer keeps much more memory than twice their length.
  [[nodiscard]] SharedBytes Compact() const;
  /// Whether both values begin at the same byte of the same buffer.
  [[nodiscard]] bool StartsWhere(const SharedBytes& other) const {
    return mBuffer == other.mBuffer && mView.data() == other.mView.data();
  }

 private:
  /// The head of a buffer; the bytes follow.
  struct Buffer {
    size_t references = 1;
    size_t used = 0;
    size_t capacity = 0;

    char* Data() { return reinterpret_cast<char*>(this + 1); }
    std::string_view Append(std::string_view bytes);
  };
  static Buffer* Make(size_t capacity);
  static Buffer* Resized(Buffer* buffer, size_t capacity);
  static void Free(Buffer* buffer);
  SharedBytes(Buffer* adopted, std::string_view view) : mBuffer(adopted), mView(view) {}
  [[nodiscard]] bool HasRoomFor(size_t tail) const;

  Buffer* mBuffer = nullptr;
  std::string_view mView;
};

}  // namespace quorvel
