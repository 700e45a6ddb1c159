#include "native/text/search.h"

#include <algorithm>

namespace quorvel {

namespace {

// The bytes that are looked at together.
constexpr size_t kBlock = 256;
// The bytes that a search from the end looks at in one go.
constexpr size_t kBackwards = size_t{1} << 20;

}  // namespace

Needle::Needle(const std::vector<Character>& the_characters) {
  for (const auto& [one, other] : the_characters) {
    lengths.push_back(one.size());
    for (size_t i = 0; i < one.size(); ++i) {
      bytes.push_back({static_cast<uint8_t>(one[i]), static_cast<uint8_t>(other[i])});
    }
  }
}

// Each character has one of its forms throughout.
bool Needle::IsAt(const char* at) const {
  size_t begin = 0;
  for (const size_t length : lengths) {
    const auto form_is_there = [&](auto form) {
      for (size_t i = begin; i < begin + length; ++i) {
        if (static_cast<uint8_t>(at[i]) != bytes[i].*form) return false;
      }
      return true;
    };
    if (!form_is_there(&Either::one) && !form_is_there(&Either::other)) return false;
    begin += length;
  }
  return true;
}

// Compares the first and the last byte of the needle with all positions of a block at once, in a
// loop that compilers turn into vector instructions, and looks closer at the blocks with a hit.
std::optional<size_t> Needle::FirstIn(std::string_view text, size_t from) const {
  if (IsEmpty() || text.size() < Size() || from > text.size() - Size()) return std::nullopt;
  const size_t last = Size() - 1;
  const Either first_byte = bytes.front();
  const Either last_byte = bytes.back();
  const auto begins_at = [&](const char* at) {
    const auto front = static_cast<uint8_t>(at[0]);
    const auto back = static_cast<uint8_t>(at[last]);
    const bool is_front = (front == first_byte.one) | (front == first_byte.other);
    return is_front & ((back == last_byte.one) | (back == last_byte.other));
  };
  const size_t end = text.size() - last;
  for (size_t block = from; block < end; block += kBlock) {
    const size_t count = std::min(kBlock, end - block);
    const char* const data = text.data() + block;
    bool any = false;
    if (count == kBlock) {
      for (size_t i = 0; i < kBlock; ++i) any |= begins_at(data + i);
    }
    if (!any && count == kBlock) continue;
    for (size_t i = 0; i < count; ++i) {
      if (begins_at(data + i) && IsAt(data + i)) return block + i;
    }
  }
  return std::nullopt;
}

std::optional<size_t> Needle::LastIn(std::string_view text, size_t to) const {
  if (IsEmpty()) return std::nullopt;
  size_t end = std::min(to, text.size());
  while (end >= Size()) {
    const size_t begin = end > kBackwards + Size() ? end - kBackwards - Size() : 0;
    const std::string_view part = text.substr(0, end);
    std::optional<size_t> last;
    for (auto hit = FirstIn(part, begin); hit; hit = FirstIn(part, *hit + 1)) last = hit;
    if (last || begin == 0) return last;
    end = begin + Size() - 1;
  }
  return std::nullopt;
}

}  // namespace quorvel
