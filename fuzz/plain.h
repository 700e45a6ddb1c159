#pragma once

#include <array>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <string_view>
#include <vector>

/// What the models of the fuzz targets share. Nothing here uses the program's own code.
namespace plain {

/// The sequence of `length` bytes that UTF-8 has for a code of that many bytes.
inline std::string Sequence(uint32_t code, size_t length) {
  constexpr std::array<uint32_t, 5> kMark = {0, 0, 0xC0, 0xE0, 0xF0};
  std::string sequence;
  for (size_t i = 1; i < length; ++i, code >>= 6) {
    sequence.insert(sequence.begin(), static_cast<char>(0x80 | (code & 0x3F)));
  }
  return static_cast<char>(kMark[length] | code) + sequence;
}

/// The number of bytes of the code's shortest sequence; 0 for a code that has none.
inline size_t LengthOf(uint32_t code) {
  if (code > 0x10FFFF || (code >= 0xD800 && code <= 0xDFFF)) return 0;
  return code < 0x80 ? 1 : code < 0x800 ? 2 : code < 0x10000 ? 3 : 4;
}

/// The codes of the characters: takes each run of up to four bytes for a sequence, and believes a
/// run that encodes to itself. Any other byte is a character with the byte's value as its code.
inline std::vector<uint32_t> Codes(std::string_view bytes) {
  std::vector<uint32_t> codes;
  while (!bytes.empty()) {
    size_t taken = 1;
    uint32_t code = static_cast<uint8_t>(bytes[0]);
    for (size_t length = 2; length <= 4 && length <= bytes.size() && code >= 0x80; ++length) {
      uint32_t joined = static_cast<uint8_t>(bytes[0]) & (0x7FU >> length);
      for (const char byte : bytes.substr(1, length - 1)) joined = joined << 6 | (byte & 0x3F);
      if (LengthOf(joined) != length || Sequence(joined, length) != bytes.substr(0, length))
        continue;
      code = joined;
      taken = length;
      break;
    }
    codes.push_back(code);
    bytes.remove_prefix(taken);
  }
  return codes;
}

/// Ends the run unless both are the same.
template <class Value>
void MustEqual(const char* what, const Value& is, const Value& must_be) {
  if (is == must_be) return;
  std::fprintf(stderr, "%s differs from the model\n", what);
  std::abort();
}

}  // namespace plain
