#include "platform/values/memory_block.h"

#include <algorithm>
#include <cstring>

#include "platform/values/exceptions.h"

namespace quorvel {

void MemoryBlock::RaiseOutOfBounds() {
  throw OutOfBoundsException("A write would reach past the end of the block.");
}

std::string& MemoryBlock::OwnBytes() {
  if (mOwn.empty()) {
    mOwn = Bytes();
    mOwn.resize(static_cast<size_t>(mSize));
    mShared = {};
  }
  return mOwn;
}

void MemoryBlock::Long(int32_t offset, int32_t value) {
  Require(Fits(offset, kLongSize));
  const uint32_t stored = InOrder(static_cast<uint32_t>(value));
  std::memcpy(OwnBytes().data() + offset, &stored, sizeof stored);
}

Text MemoryBlock::OwnText(size_t start, size_t count) const {
  return Text::FromBytes(mOwn.empty() ? std::string(count, '\0') : mOwn.substr(start, count));
}

// Writes `length` bytes: the text, then bytes of 0.
void MemoryBlock::Write(int32_t offset, const Text& text, int32_t length) {
  std::string& bytes = OwnBytes();
  const auto end = std::ranges::copy(text.Bytes(), bytes.begin() + offset).out;
  std::fill(end, bytes.begin() + offset + length, '\0');
}

}  // namespace quorvel
