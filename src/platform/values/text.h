#pragma once

#include <cstddef>
#include <cstdint>
#include <limits>
#include <string>
#include <string_view>
#include <utility>

#include "platform/values/shared_bytes.h"

namespace quorvel {

/// The encoding mark of a text's bytes. Bytes with either mark are read as UTF-8.
enum class TextEncoding : uint8_t { None, UTF8 };

namespace Encodings {
inline constexpr TextEncoding UTF8 = TextEncoding::UTF8;
}

/// A text: immutable bytes with an encoding mark; a value, cheap to copy.
///
/// A text is a view of a shared buffer. `a + b` writes `b` behind `a` in the same buffer when `a`
/// ends the used part of the buffer, so that a log grown line by line costs the length of each
/// line, not of the log. Parts of a text are views as well. A text changes only by assignment and
/// `+=`, and no other text with it.
///
/// A character is a well-formed UTF-8 sequence, or any other single byte. The functions below count
/// positions from 1, the members count indexes and offsets from 0. For one thread only.
class Text {
 public:
  Text() = default;
  Text(const char* utf8) : Text(FromBytes(utf8, TextEncoding::UTF8)) {}

  /// A text with a copy of `bytes`. Any bytes are allowed.
  static Text FromBytes(std::string_view bytes, TextEncoding encoding = TextEncoding::None) {
    return Text(SharedBytes::Copy(bytes), encoding);
  }

  /// The bytes, valid until this text is changed and no copy of this text is left.
  [[nodiscard]] std::string_view Bytes() const { return mBytes.View(); }
  [[nodiscard]] TextEncoding Encoding() const { return mEncoding; }
  [[nodiscard]] bool IsEmpty() const { return mBytes.View().empty(); }

  /// The number of characters.
  [[nodiscard]] size_t CharacterCount() const;
  /// `count` characters from `index` on, or fewer at the end of the text.
  [[nodiscard]] Text Characters(size_t index, size_t count) const;
  /// `length` bytes from `offset` on, or fewer at the end of the text.
  [[nodiscard]] Text ByteRange(size_t offset, size_t length) const {
    const size_t size = Bytes().size();
    if (offset >= size) return Text({}, mEncoding);
    return Text(mBytes.Slice(offset, length < size - offset ? length : size - offset), mEncoding);
  }
  /// The same bytes with another mark.
  [[nodiscard]] Text WithEncoding(TextEncoding encoding) const& { return Text(mBytes, encoding); }
  [[nodiscard]] Text WithEncoding(TextEncoding encoding) && {
    return Text(std::move(mBytes), encoding);
  }

  /// Whether both texts are views of the same bytes in memory.
  [[nodiscard]] bool IsSameViewAs(const Text& other) const {
    return Bytes().data() == other.Bytes().data() && Bytes().size() == other.Bytes().size();
  }
  /// Whether this text begins with all bytes of `prefix`. Takes constant time when this text was
  /// made by joining to the end of `prefix` in the same buffer.
  [[nodiscard]] bool Extends(const Text& prefix) const {
    if (Bytes().size() < prefix.Bytes().size()) return false;
    return mBytes.StartsWhere(prefix.mBytes) || Bytes().starts_with(prefix.Bytes());
  }

  /// The text with `map(byte)` in the stead of each byte.
  template <class Map>
  [[nodiscard]] Text Mapped(const Map& map) const {
    return Text(SharedBytes::Mapped(Bytes(), map), mEncoding);
  }

  /// The same text, without the memory of a much longer text of which this text was a part.
  [[nodiscard]] Text Compact() const { return Text(mBytes.Compact(), mEncoding); }

  /// Joins `tail` to the end of this text.
  Text& operator+=(const Text& tail) {
    if (IsEmpty()) {
      mBytes = tail.mBytes;
    } else {
      mBytes.Append(tail.Bytes());
    }
    return MarkLike(tail.mEncoding);
  }
  /// Joins a literal, without making a text of the literal first.
  Text& operator+=(const char* utf8) {
    mBytes.Append(utf8);
    return MarkLike(TextEncoding::UTF8);
  }

 private:
  Text(SharedBytes bytes, TextEncoding encoding) : mBytes(std::move(bytes)), mEncoding(encoding) {}
  [[nodiscard]] size_t OffsetOf(size_t index) const;
  Text& MarkLike(TextEncoding tail) {
    if (tail == TextEncoding::UTF8) mEncoding = tail;
    return *this;
  }

  SharedBytes mBytes;
  TextEncoding mEncoding = TextEncoding::None;
};

/// The texts joined; marked UTF-8 when either text is.
[[nodiscard]] inline Text operator+(Text left, const Text& right) {
  left += right;
  return left;
}
[[nodiscard]] inline Text operator+(Text left, const char* utf8) {
  left += utf8;
  return left;
}

/// Equality that ignores the case of ASCII letters. `StrComp` with mode 0 compares exactly.
bool operator==(const Text& left, const Text& right);

/// The line end of all texts that the program makes.
inline constexpr const char* EndOfLine = "\n";

/// 0 for equal texts, -1 when `left` comes first, 1 when `right` does. Mode 0 compares the bytes,
/// mode 1 ignores the case of ASCII letters.
[[nodiscard]] int32_t StrComp(const Text& left, const Text& right, int32_t mode);

/// The number of characters.
[[nodiscard]] int32_t Len(const Text& text);
/// The number of bytes.
[[nodiscard]] inline int32_t LenB(const Text& text) {
  constexpr size_t kMost = std::numeric_limits<int32_t>::max();
  return static_cast<int32_t>(text.Bytes().size() < kMost ? text.Bytes().size() : kMost);
}
/// The first, or last, `count` characters; all characters of a shorter text.
[[nodiscard]] Text Left(const Text& text, int32_t count);
[[nodiscard]] Text Right(const Text& text, int32_t count);
/// `length` characters, or all, from position `start` on. Empty when `start` lies below 1 or behind
/// the end.
[[nodiscard]] Text Mid(const Text& text, int32_t start, int32_t length);
[[nodiscard]] Text Mid(const Text& text, int32_t start);
/// The bytes from byte position `start` on; empty when `start` lies below 1 or behind the end.
[[nodiscard]] inline Text MidB(const Text& text, int64_t start) {
  if (start < 1) return {};
  return text.ByteRange(static_cast<size_t>(start) - 1, text.Bytes().size());
}

/// The code of the first character: the code point of a well-formed sequence, or the value of a
/// single byte; 0 for an empty text.
[[nodiscard]] int32_t Asc(const Text& text);
/// Folds ASCII letters only, so that every machine gets the same result.
[[nodiscard]] Text Lowercase(const Text& text);
/// The text without blanks, tabs, LF, VT, FF and CR at both ends.
[[nodiscard]] Text Trim(const Text& text);

/// The value in decimal.
[[nodiscard]] Text Str(int32_t value);
/// The number at the front of the text (sign, digits, fraction; no exponent), as the double nearest
/// to it; 0 when there is none, infinity when it is too large for a double.
[[nodiscard]] double Val(const Text& text);
/// Whether the text is one or more ASCII digits and nothing else.
[[nodiscard]] bool IsNumeric(const Text& text);

/// The text with the mark `encoding`. For UTF8 the bytes become valid UTF-8: well-formed sequences
/// stay, and any other byte is read as ISO 8859-1.
[[nodiscard]] Text ConvertEncoding(const Text& text, TextEncoding encoding);

/// The text's bytes for the native side: always valid UTF-8.
[[nodiscard]] std::string NativeText(const Text& text);

}  // namespace quorvel
