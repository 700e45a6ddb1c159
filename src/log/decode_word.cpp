#include "log/decode_word.h"

#include <algorithm>
#include <string>

namespace quorvel::mGlobals {

namespace {

bool IsWithin(char c, char first, char last) { return c >= first && c <= last; }

char Mirror(char c) {
  const auto mirror_within = [c](char first, char last) {
    return static_cast<char>(first + (last - c));
  };
  if (IsWithin(c, 'a', 'z')) return mirror_within('a', 'z');
  if (IsWithin(c, 'A', 'Z')) return mirror_within('A', 'Z');
  if (IsWithin(c, '0', '9')) return mirror_within('0', '9');
  return c;
}

}  // namespace

// UTF-8 has no letter and no digit among the bytes of a longer character, so each byte can be
// mirrored alone.
Text mDecodeWordReverse(const Text& text) {
  std::string mirrored(text.Bytes());
  std::ranges::transform(mirrored, mirrored.begin(), Mirror);
  return Text::FromBytes(mirrored, text.Encoding());
}

}  // namespace quorvel::mGlobals
