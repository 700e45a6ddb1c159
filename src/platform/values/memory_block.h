#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <limits>
#include <string>
#include <string_view>

#include "platform/values/text.h"

namespace quorvel {

/// A block of bytes of a fixed size, all 0 at first; a value. A text written over the whole block
/// shares the text's bytes with the block; the next write copies the bytes.
///
/// Offsets and lengths are in bytes, and offsets count from 0. Integers are little-endian unless
/// `LittleEndian` is set to false.
class MemoryBlock {
 public:
  /// Raises `OutOfBoundsException` when `size`, in bytes, is negative.
  explicit MemoryBlock(int32_t size) : mSize(size) { Require(size >= 0); }

  [[nodiscard]] int32_t Size() const { return mSize; }

  void LittleEndian(bool little_endian) { mLittleEndian = little_endian; }

  /// The signed 32-bit integer at `offset`; 2147483647 when four bytes do not fit there.
  [[nodiscard]] int32_t Long(int32_t offset) const {
    if (!Fits(offset, kLongSize)) return std::numeric_limits<int32_t>::max();
    if (Bytes().empty()) return 0;
    uint32_t value = 0;
    std::memcpy(&value, Bytes().data() + offset, sizeof value);
    return static_cast<int32_t>(InOrder(value));
  }
  /// Writes `value` as four bytes. Raises `OutOfBoundsException` when four bytes do not fit there.
  void Long(int32_t offset, int32_t value);

  /// `length` bytes from `offset` on, or fewer at the end of the block, as a text without an
  /// encoding mark. Empty when `offset` lies outside of the block or `length` is negative.
  [[nodiscard]] Text StringValue(int32_t offset, int32_t length) const {
    if (offset < 0 || offset >= mSize || length <= 0) return {};
    const auto start = static_cast<size_t>(offset);
    const auto count = static_cast<size_t>(length < mSize - offset ? length : mSize - offset);
    if (mShared.IsEmpty()) return OwnText(start, count);
    return mShared.ByteRange(start, count).WithEncoding(TextEncoding::None);
  }
  /// Writes the first `length` bytes of `text`; a shorter text is padded with bytes of 0. Raises
  /// `OutOfBoundsException` when `length` bytes do not fit there.
  void StringValue(int32_t offset, int32_t length, const Text& text) {
    Require(Fits(offset, length));
    const bool whole = length == mSize && text.Bytes().size() >= static_cast<size_t>(length);
    if (!whole) return Write(offset, text.ByteRange(0, static_cast<size_t>(length)), length);
    mShared = text.ByteRange(0, static_cast<size_t>(length));
    mOwn.clear();
  }

 private:
  static constexpr int32_t kLongSize = 4;

  static void Require(bool fits) {
    if (!fits) RaiseOutOfBounds();
  }
  [[noreturn]] static void RaiseOutOfBounds();
  [[nodiscard]] bool Fits(int32_t offset, int32_t length) const {
    return offset >= 0 && length >= 0 && offset <= mSize && length <= mSize - offset;
  }
  // The value with its bytes in the block's order, from the machine's order, or the other way
  // round.
  [[nodiscard]] uint32_t InOrder(uint32_t value) const {
    if (mLittleEndian == (std::endian::native == std::endian::little)) return value;
    return value >> 24 | (value >> 8 & 0xFF00U) | (value << 8 & 0xFF0000U) | value << 24;
  }
  [[nodiscard]] std::string_view Bytes() const {
    return mOwn.empty() ? mShared.Bytes() : std::string_view(mOwn);
  }
  [[nodiscard]] Text OwnText(size_t start, size_t count) const;
  std::string& OwnBytes();
  void Write(int32_t offset, const Text& text, int32_t length);

  int32_t mSize;
  bool mLittleEndian = true;
  // The bytes are those of `mOwn`, else those of `mShared`; all bytes are 0 when both are empty.
  Text mShared;
  std::string mOwn;
};

}  // namespace quorvel
