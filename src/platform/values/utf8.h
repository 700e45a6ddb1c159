#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace quorvel {

/// One character of a byte string: a well-formed UTF-8 sequence, or a single byte that is none.
struct Utf8Character {
  size_t length = 1;
  int32_t code = 0;  ///< code point, or the byte itself when it is not well formed
  bool well_formed = false;
};

/// The character that starts at the front of `bytes`, which must not be empty.
[[nodiscard]] Utf8Character DecodeUtf8(std::string_view bytes);
/// How many bytes the front of `bytes` has before the first one that is not ASCII.
[[nodiscard]] size_t AsciiRun(std::string_view bytes);
[[nodiscard]] bool IsValidUtf8(std::string_view bytes);

}  // namespace quorvel
