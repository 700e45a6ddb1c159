#include "log/decode_word.h"

namespace quorvel::mGlobals {

namespace {

// Without a table, so that the compiler mirrors 16 bytes at a time.
constexpr char Mirrored(char byte) {
  const auto within = [byte](char first, char last) { return byte >= first && byte <= last; };
  if (within('a', 'z')) return static_cast<char>('a' + 'z' - byte);
  if (within('A', 'Z')) return static_cast<char>('A' + 'Z' - byte);
  if (within('0', '9')) return static_cast<char>('0' + '9' - byte);
  return byte;
}

}  // namespace

// UTF-8 has no letter and no digit among the bytes of a longer character, so each byte can be
// mirrored alone.
Text mDecodeWordReverse(const Text& text) {
  return text.Mapped([](char byte) { return Mirrored(byte); });
}

}  // namespace quorvel::mGlobals
