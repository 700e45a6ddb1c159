#include "platform/values/memory_block.h"

#include <algorithm>
#include <limits>
#include <utility>

#include "platform/values/exceptions.h"

namespace quorvel {

namespace {
constexpr int32_t kLongSize = 4;

void Require(bool fits) {
  if (!fits) throw OutOfBoundsException("A write would reach past the end of the block.");
}
}  // namespace

MemoryBlock::MemoryBlock(int32_t size) : mSize(size) { Require(size >= 0); }

bool MemoryBlock::Fits(int32_t offset, int32_t length) const {
  return offset >= 0 && length >= 0 && offset <= mSize && length <= mSize - offset;
}

int32_t MemoryBlock::ShiftOf(int32_t byte_index) const {
  return 8 * (mLittleEndian ? byte_index : kLongSize - 1 - byte_index);
}

// The bytes of the block; none while all bytes are 0.
std::string_view MemoryBlock::Bytes() const {
  if (const auto* const shared = std::get_if<Text>(&mBytes)) return shared->Bytes();
  if (const auto* const own = std::get_if<std::string>(&mBytes)) return *own;
  return {};
}

std::string& MemoryBlock::OwnBytes() {
  if (!std::holds_alternative<std::string>(mBytes)) {
    std::string own(Bytes());
    own.resize(static_cast<size_t>(mSize));
    mBytes = std::move(own);
  }
  return std::get<std::string>(mBytes);
}

int32_t MemoryBlock::Long(int32_t offset) const {
  if (!Fits(offset, kLongSize)) return std::numeric_limits<int32_t>::max();
  if (Bytes().empty()) return 0;
  const std::string_view bytes = Bytes().substr(static_cast<size_t>(offset));
  uint32_t value = 0;
  for (int32_t i = 0; i < kLongSize; ++i) {
    value |= uint32_t{static_cast<uint8_t>(bytes[static_cast<size_t>(i)])} << ShiftOf(i);
  }
  return static_cast<int32_t>(value);
}

void MemoryBlock::Long(int32_t offset, int32_t value) {
  Require(Fits(offset, kLongSize));
  std::string& bytes = OwnBytes();
  for (int32_t i = 0; i < kLongSize; ++i) {
    bytes[static_cast<size_t>(offset) + static_cast<size_t>(i)] =
        static_cast<char>(static_cast<uint32_t>(value) >> ShiftOf(i));
  }
}

Text MemoryBlock::StringValue(int32_t offset, int32_t length) const {
  if (offset < 0 || offset >= mSize || length <= 0) return {};
  const auto start = static_cast<size_t>(offset);
  const auto count = static_cast<size_t>(std::min(length, mSize - offset));
  if (const auto* const shared = std::get_if<Text>(&mBytes)) {
    return shared->ByteRange(start, count).WithEncoding(TextEncoding::None);
  }
  if (const auto* const own = std::get_if<std::string>(&mBytes)) {
    return Text::FromBytes(std::string_view(*own).substr(start, count));
  }
  return Text::FromBytes(std::string(count, '\0'));
}

void MemoryBlock::StringValue(int32_t offset, int32_t length, const Text& text) {
  Require(Fits(offset, length));
  const Text written = text.ByteRange(0, static_cast<size_t>(length));
  if (length == mSize && LenB(written) == length) {
    mBytes = written;
    return;
  }
  std::string& bytes = OwnBytes();
  const auto end = std::ranges::copy(written.Bytes(), bytes.begin() + offset).out;
  std::fill(end, bytes.begin() + offset + length, '\0');
}

}  // namespace quorvel
