#include "log/decode_word.h"

#include <cstddef>

namespace quorvel::mGlobals {

namespace {

constexpr void MirrorWithin(ByteTable& table, char first, char last) {
  for (int c = first; c <= last; ++c) {
    table[static_cast<size_t>(c)] = static_cast<char>(first + (last - c));
  }
}

constexpr ByteTable MirrorTable() {
  ByteTable table{};
  for (size_t byte = 0; byte < table.size(); ++byte) table[byte] = static_cast<char>(byte);
  MirrorWithin(table, 'a', 'z');
  MirrorWithin(table, 'A', 'Z');
  MirrorWithin(table, '0', '9');
  return table;
}

constexpr ByteTable kMirror = MirrorTable();

}  // namespace

// UTF-8 has no letter and no digit among the bytes of a longer character, so each byte can be
// mirrored alone.
Text mDecodeWordReverse(const Text& text) { return text.Mapped(kMirror); }

}  // namespace quorvel::mGlobals
