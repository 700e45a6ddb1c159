#include "platform/values/text.h"

#include <algorithm>
#include <charconv>
#include <limits>
#include <system_error>

#include "native/text/utf8.h"

namespace quorvel {

namespace {

char FoldAscii(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; }
bool IsDigit(char c) { return c >= '0' && c <= '9'; }

int32_t ToCount(size_t count) {
  return static_cast<int32_t>(std::min<size_t>(count, std::numeric_limits<int32_t>::max()));
}

// The double for a number that is too large or too near to 0 for any other.
double BeyondRange(std::string_view digits) {
  const std::string_view whole = digits.substr(0, digits.find('.'));
  const bool large = whole.find_first_not_of('0') != std::string_view::npos;
  return large ? std::numeric_limits<double>::infinity() : 0;
}

std::string Folded(std::string_view bytes) {
  std::string folded(bytes);
  std::transform(folded.begin(), folded.end(), folded.begin(), FoldAscii);
  return folded;
}

}  // namespace

size_t Text::CharacterCount() const {
  if (IsEmpty()) return 0;
  Walk& walk = mBytes.LastWalk();
  if (walk.count <= walk.bytes.size()) return walk.count;
  size_t count = AsciiRun(walk.bytes);
  for (size_t offset = count; offset < walk.bytes.size(); ++count) {
    offset += DecodeUtf8(walk.bytes.substr(offset)).length;
  }
  return walk.count = count;
}

// Walks on from the character of the last access, so that a loop over all characters is linear.
size_t Text::OffsetOf(size_t index) const {
  if (IsEmpty()) return 0;
  Walk& walk = mBytes.LastWalk();
  if (walk.count == walk.bytes.size()) return std::min(index, walk.bytes.size());
  if (index < walk.index) walk.index = walk.offset = 0;
  while (walk.index < index && walk.offset < walk.bytes.size()) {
    walk.offset += DecodeUtf8(walk.bytes.substr(walk.offset)).length;
    ++walk.index;
  }
  return walk.offset;
}

Text Text::Characters(size_t index, size_t count) const {
  const size_t start = OffsetOf(index);
  const size_t rest = Bytes().size() - start;
  if (count >= rest) return ByteRange(start, rest);
  return ByteRange(start, OffsetOf(index + count) - start);
}

bool operator==(const Text& left, const Text& right) {
  return std::ranges::equal(left.Bytes(), right.Bytes(), {}, FoldAscii, FoldAscii);
}

int32_t StrComp(const Text& left, const Text& right, int32_t mode) {
  const int order = mode == 0 ? left.Bytes().compare(right.Bytes())
                              : Folded(left.Bytes()).compare(Folded(right.Bytes()));
  return (order > 0) - (order < 0);
}

int32_t Len(const Text& text) { return ToCount(text.CharacterCount()); }

Text Left(const Text& text, int32_t count) { return Mid(text, 1, count); }

Text Right(const Text& text, int32_t count) {
  return Mid(text, Len(text) - std::clamp(count, 0, Len(text)) + 1);
}

Text Mid(const Text& text, int32_t start, int32_t length) {
  if (start < 1 || length < 1) return {};
  return text.Characters(static_cast<size_t>(start) - 1, static_cast<size_t>(length));
}

Text Mid(const Text& text, int32_t start) {
  return Mid(text, start, std::numeric_limits<int32_t>::max());
}

int32_t Asc(const Text& text) { return text.IsEmpty() ? 0 : DecodeUtf8(text.Bytes()).code; }

Text Lowercase(const Text& text) { return Text::FromBytes(Folded(text.Bytes()), text.Encoding()); }

Text Trim(const Text& text) {
  constexpr std::string_view kBlank = " \t\n\v\f\r";
  const size_t first = text.Bytes().find_first_not_of(kBlank);
  if (first == std::string_view::npos) return {};
  return text.ByteRange(first, text.Bytes().find_last_not_of(kBlank) + 1 - first);
}

Text Str(int32_t value) { return std::to_string(value).c_str(); }

double Val(const Text& text) {
  const Text trimmed = Trim(text);
  std::string_view digits = trimmed.Bytes();
  const bool negative = digits.starts_with('-');
  if (negative || digits.starts_with('+')) digits.remove_prefix(1);
  // Digits and one period alone are a number: no exponent, and no name of an infinity.
  digits = digits.substr(0, digits.find_first_not_of("0123456789."));
  double value = 0;
  const auto read = std::from_chars(digits.data(), digits.data() + digits.size(), value,
                                    std::chars_format::fixed);
  if (read.ec == std::errc::result_out_of_range) value = BeyondRange(digits);
  return negative ? -value : value;
}

bool IsNumeric(const Text& text) {
  return !text.IsEmpty() && std::ranges::all_of(text.Bytes(), IsDigit);
}

Text ConvertEncoding(const Text& text, TextEncoding encoding) {
  if (encoding != Encodings::UTF8 || IsValidUtf8(text.Bytes())) return text.WithEncoding(encoding);
  return Text::FromBytes(ToValidUtf8(text.Bytes()), encoding);
}

std::string NativeText(const Text& text) {
  return std::string(ConvertEncoding(text, Encodings::UTF8).Bytes());
}

}  // namespace quorvel
