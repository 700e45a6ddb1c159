#include "native/text/utf8.h"

#include <cstring>

namespace quorvel {

namespace {

uint8_t ByteAt(std::string_view bytes, size_t index) { return static_cast<uint8_t>(bytes[index]); }

bool IsContinuation(uint8_t byte) { return (byte & 0xC0) == 0x80; }

// The length of the sequence behind a lead byte, lead byte included; 1 for a byte that leads no
// sequence.
size_t AnnouncedLength(uint8_t lead) {
  if (lead >= 0xC2 && lead <= 0xDF) return 2;
  if (lead >= 0xE0 && lead <= 0xEF) return 3;
  if (lead >= 0xF0 && lead <= 0xF4) return 4;
  return 1;
}

// Overlong forms, surrogates and codes above U+10FFFF are not well formed.
bool IsScalarOfLength(int32_t code, size_t length) {
  if (length == 3) return code >= 0x800 && (code < 0xD800 || code > 0xDFFF);
  if (length == 4) return code >= 0x10000 && code <= 0x10FFFF;
  return true;
}

}  // namespace

Utf8Character DecodeUtf8(std::string_view bytes) {
  const uint8_t lead = ByteAt(bytes, 0);
  if (lead < 0x80) return {1, lead, true};
  const Utf8Character single{1, lead, false};
  const size_t length = AnnouncedLength(lead);
  if (length == 1 || bytes.size() < length) return single;
  int32_t code = lead & (0x7F >> length);
  for (size_t i = 1; i < length; ++i) {
    const uint8_t byte = ByteAt(bytes, i);
    if (!IsContinuation(byte)) return single;
    code = (code << 6) | (byte & 0x3F);
  }
  if (!IsScalarOfLength(code, length)) return single;
  return {length, code, true};
}

size_t OutsideSequence(std::string_view bytes, size_t position) {
  constexpr size_t kLongest = 4;
  for (size_t back = 0; back < kLongest && back <= position; ++back) {
    const size_t at = position - back;
    if (at >= bytes.size() || !IsContinuation(ByteAt(bytes, at))) return at;
  }
  return position;
}

size_t AsciiRun(std::string_view bytes) {
  constexpr uint64_t kHighBits = 0x8080808080808080U;
  size_t i = 0;
  for (uint64_t word = 0; i + sizeof word <= bytes.size(); i += sizeof word) {
    std::memcpy(&word, bytes.data() + i, sizeof word);
    if ((word & kHighBits) != 0) break;
  }
  while (i < bytes.size() && ByteAt(bytes, i) < 0x80) ++i;
  return i;
}

bool IsValidUtf8(std::string_view bytes) {
  while (true) {
    bytes.remove_prefix(AsciiRun(bytes));
    if (bytes.empty()) return true;
    const Utf8Character character = DecodeUtf8(bytes);
    if (!character.well_formed) return false;
    bytes.remove_prefix(character.length);
  }
}

std::string ToValidUtf8(std::string_view bytes) {
  std::string valid;
  valid.reserve(bytes.size() + bytes.size() / 8);
  while (!bytes.empty()) {
    const Utf8Character character = DecodeUtf8(bytes);
    if (character.well_formed) {
      valid.append(bytes.substr(0, character.length));
    } else {
      valid.push_back(static_cast<char>(0xC0 | (character.code >> 6)));
      valid.push_back(static_cast<char>(0x80 | (character.code & 0x3F)));
    }
    bytes.remove_prefix(character.length);
  }
  return valid;
}

}  // namespace quorvel
