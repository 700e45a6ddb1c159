#pragma once

#include <cstdint>
#include <string>
#include <variant>

#include "platform/values/text.h"

namespace quorvel {

/// A block of bytes of a fixed size, all 0 at first; a value. A text written over the whole block
/// is shared with it, not copied, until the block is written to again.
///
/// Offsets count from 0. Integers are little-endian unless `LittleEndian` is set to false.
class MemoryBlock {
 public:
  /// `size` in bytes. Raises `OutOfBoundsException` when it is negative.
  explicit MemoryBlock(int32_t size);

  [[nodiscard]] int32_t Size() const { return mSize; }

  void LittleEndian(bool little_endian) { mLittleEndian = little_endian; }

  /// The signed 32-bit integer at `offset`; 2147483647 when it does not fit the block.
  [[nodiscard]] int32_t Long(int32_t offset) const;
  /// Raises `OutOfBoundsException` when it does not fit.
  void Long(int32_t offset, int32_t value);

  /// `length` bytes from `offset` on as a text with no mark: what is there when that reaches past
  /// the end, nothing when the length is negative.
  [[nodiscard]] Text StringValue(int32_t offset, int32_t length) const;
  /// Writes the first `length` bytes of `text`, padded with 0. Raises `OutOfBoundsException` when
  /// they do not fit.
  void StringValue(int32_t offset, int32_t length, const Text& text);

 private:
  [[nodiscard]] bool Fits(int32_t offset, int32_t length) const;
  [[nodiscard]] int32_t ShiftOf(int32_t byte_index) const;
  std::string& OwnBytes();

  int32_t mSize;
  bool mLittleEndian = true;
  // Empty stands for bytes that are all 0 and were never touched.
  std::variant<std::monostate, Text, std::string> mBytes;
};

}  // namespace quorvel
