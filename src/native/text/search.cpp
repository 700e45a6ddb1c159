#include "native/text/search.h"

#include <algorithm>

namespace quorvel {

namespace {

using Either = Needle::Either;

// The bytes that are looked at together.
constexpr size_t kBlock = 256;
// The bytes that a search from the end looks at in one go.
constexpr size_t kBackwards = size_t{1} << 16;

// Whether, somewhere in two blocks of bytes, `front` and `back` stand at the same offset.
bool MayBeginIn(const char* fronts, const char* backs, Either front, Either back) {
  uint8_t any = 0;
  for (size_t i = 0; i < kBlock; ++i) {
    const auto one = static_cast<uint8_t>(fronts[i]);
    const auto two = static_cast<uint8_t>(backs[i]);
    const int is_front = static_cast<int>(one == front.one) | static_cast<int>(one == front.other);
    const int is_back = static_cast<int>(two == back.one) | static_cast<int>(two == back.other);
    any = static_cast<uint8_t>(any | (is_front & is_back));
  }
  return any != 0;
}

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
  const size_t end = text.size() - last;
  size_t at = from;
  while (at < end) {
    const char* const data = text.data() + at;
    if (end - at >= kBlock && !MayBeginIn(data, data + last, bytes.front(), bytes.back())) {
      at += kBlock;
      continue;
    }
    const size_t stop = std::min(at + kBlock, end);
    for (; at < stop; ++at) {
      if (IsAt(text.data() + at)) return at;
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
