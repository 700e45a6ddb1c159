#include "log/decode_word.h"

#include <cstddef>
#include <cstdint>

namespace quorvel::mGlobals {

namespace {

constexpr void MirrorWithin(ByteTable& table, uint8_t first, uint8_t last) {
  for (uint8_t byte = first; byte <= last; ++byte) {
    table[byte] = static_cast<char>(first + (last - byte));
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
