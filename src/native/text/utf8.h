#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace quorvel {

/// A character of a byte string: a well-formed UTF-8 sequence, or any other single byte.
struct Utf8Character {
  size_t length = 1;  ///< in bytes
  int32_t code = 0;   ///< code point of a well-formed sequence, or value of a single byte
  bool well_formed = false;
};

/// The first character of `bytes`; `bytes` must not be empty.
[[nodiscard]] Utf8Character DecodeUtf8(std::string_view bytes);
/// The last position at or before `position` that is not inside of a sequence; `position` itself
/// when no sequence can be that long. `position` may be the end of `bytes`.
[[nodiscard]] size_t OutsideSequence(std::string_view bytes, size_t position);
/// The number of bytes of `bytes` before the first byte that is not ASCII.
[[nodiscard]] size_t AsciiRun(std::string_view bytes);
[[nodiscard]] bool IsValidUtf8(std::string_view bytes);
/// The bytes as UTF-8: well-formed sequences stay, any other byte is read as ISO 8859-1.
[[nodiscard]] std::string ToValidUtf8(std::string_view bytes);

}  // namespace quorvel
