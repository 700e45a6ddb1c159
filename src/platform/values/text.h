#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "platform/values/shared_bytes.h"

namespace quorvel {

/// What is known of a text's bytes. Either way they are read as UTF-8.
enum class TextEncoding : uint8_t { None, UTF8 };

namespace Encodings {
inline constexpr TextEncoding UTF8 = TextEncoding::UTF8;
}

/// A text: immutable bytes with an encoding mark; a value, cheap to copy.
///
/// It is a view of a shared buffer. `a + b` extends that buffer in place when `a` ends where the
/// buffer's used part ends, so that a text built by joining at its end costs what is joined;
/// parts of a text are views as well. Values already handed out never change.
///
/// A character is a well-formed UTF-8 sequence, or else a single byte. Positions count from 1.
/// Not for use from several threads.
class Text {
 public:
  Text() = default;
  Text(const char* utf8) : Text(FromBytes(utf8, TextEncoding::UTF8)) {}

  /// A text with a copy of `bytes`, which may be any bytes at all.
  static Text FromBytes(std::string_view bytes, TextEncoding encoding = TextEncoding::None);

  /// The bytes; valid as long as this text or a copy of it.
  [[nodiscard]] std::string_view Bytes() const { return mBytes.View(); }
  [[nodiscard]] TextEncoding Encoding() const { return mEncoding; }
  [[nodiscard]] bool IsEmpty() const { return mBytes.View().empty(); }

  /// The number of characters; counted once, then kept.
  [[nodiscard]] size_t CharacterCount() const;
  /// `count` characters from the one at `index` on (from 0), as far as there are any.
  [[nodiscard]] Text Characters(size_t index, size_t count) const;
  /// `length` bytes from `offset` (from 0) on, as far as there are any.
  [[nodiscard]] Text ByteRange(size_t offset, size_t length) const;
  [[nodiscard]] Text WithEncoding(TextEncoding encoding) const;

  /// Whether this text begins with all of `prefix`. Costs nothing when this text was made by
  /// joining to `prefix` in place.
  [[nodiscard]] bool Extends(const Text& prefix) const;

  friend Text operator+(const Text& left, const Text& right);

 private:
  [[nodiscard]] size_t OffsetOf(size_t index) const;

  static constexpr size_t kUnknown = static_cast<size_t>(-1);

  SharedBytes mBytes;
  TextEncoding mEncoding = TextEncoding::None;
  // What character access has learnt so far: the count, and the place that was last asked for.
  mutable size_t mCount = kUnknown;
  mutable size_t mLastIndex = 0;
  mutable size_t mLastOffset = 0;
};

/// Equality that ignores the case of ASCII letters. `StrComp` with mode 0 is the exact one.
bool operator==(const Text& left, const Text& right);

/// Stands for the platform's line end.
struct EndOfLineMark {
  operator Text() const { return "\n"; }
};
inline constexpr EndOfLineMark EndOfLine;

/// 0 when equal, else the sign of the order. Mode 0 compares the bytes, mode 1 ignores ASCII case.
[[nodiscard]] int32_t StrComp(const Text& left, const Text& right, int32_t mode);

[[nodiscard]] int32_t Len(const Text& text);
[[nodiscard]] int32_t LenB(const Text& text);
[[nodiscard]] Text Left(const Text& text, int32_t count);
[[nodiscard]] Text Right(const Text& text, int32_t count);
/// Empty when `start` lies below 1 or behind the end.
[[nodiscard]] Text Mid(const Text& text, int32_t start, int32_t length);
[[nodiscard]] Text Mid(const Text& text, int32_t start);
/// The rest of the bytes from byte position `start` on; empty when that lies below 1.
[[nodiscard]] Text MidB(const Text& text, int64_t start);

/// The code of the first character: its code point, or the byte when it is no part of a
/// well-formed sequence; 0 for an empty text.
[[nodiscard]] int32_t Asc(const Text& text);
/// Folds ASCII letters only, so that every machine gets the same result.
[[nodiscard]] Text Lowercase(const Text& text);
/// Without blanks, tabs, LF, VT, FF and CR at both ends.
[[nodiscard]] Text Trim(const Text& text);

[[nodiscard]] Text Str(int32_t value);
/// The number at the front of the text (sign, digits, fraction; no exponent), as the double nearest
/// to it; 0 when there is none, infinity when it is too large for a double.
[[nodiscard]] double Val(const Text& text);
/// Whether the text is one or more ASCII digits and nothing else.
[[nodiscard]] bool IsNumeric(const Text& text);

/// The text as valid UTF-8: well-formed sequences stay, any other byte is read as ISO 8859-1.
[[nodiscard]] Text ConvertEncoding(const Text& text, TextEncoding encoding);

/// The text's bytes as the native side takes them: always valid UTF-8.
[[nodiscard]] std::string NativeText(const Text& text);

}  // namespace quorvel
