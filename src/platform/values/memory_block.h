#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <variant>

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
  explicit MemoryBlock(int32_t size);

  [[nodiscard]] int32_t Size() const { return mSize; }

  void LittleEndian(bool little_endian) { mLittleEndian = little_endian; }

  /// The signed 32-bit integer at `offset`; 2147483647 when four bytes do not fit there.
  [[nodiscard]] int32_t Long(int32_t offset) const;
  /// Writes `value` as four bytes. Raises `OutOfBoundsException` when four bytes do not fit there.
  void Long(int32_t offset, int32_t value);

  /// `length` bytes from `offset` on, or fewer at the end of the block, as a text without an
  /// encoding mark. Empty when `offset` lies outside of the block or `length` is negative.
  [[nodiscard]] Text StringValue(int32_t offset, int32_t length) const;
  /// Writes the first `length` bytes of `text`; a shorter text is padded with bytes of 0. Raises
  /// `OutOfBoundsException` when `length` bytes do not fit there.
  void StringValue(int32_t offset, int32_t length, const Text& text);

 private:
  [[nodiscard]] bool Fits(int32_t offset, int32_t length) const;
  [[nodiscard]] int32_t ShiftOf(int32_t byte_index) const;
  [[nodiscard]] std::string_view Bytes() const;
  std::string& OwnBytes();

  int32_t mSize;
  bool mLittleEndian = true;
  // Empty until the first write: all bytes are 0.
  std::variant<std::monostate, Text, std::string> mBytes;
};

}  // namespace quorvel
