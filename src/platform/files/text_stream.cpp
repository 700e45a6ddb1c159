#include "platform/files/text_stream.h"

#include <span>
#include <string_view>
#include <utility>

#include "native/native.h"
#include "platform/runtime/runtime.h"

namespace quorvel {

namespace {
constexpr size_t kPiece = 65536;
constexpr size_t kLongestLine = 1048576;
}  // namespace

TextInputStream::~TextInputStream() { Native().Files().Close(mFile); }

bool TextInputStream::Fill() {
  if (mAtEnd) return false;
  mBuffer.erase(0, std::exchange(mNext, 0));
  const size_t held = mBuffer.size();
  mBuffer.resize(held + kPiece);
  const auto count = Native().Files().Read(mFile, std::span(mBuffer).subspan(held));
  mAtEnd = count <= 0;
  mBuffer.resize(held + (mAtEnd ? 0 : static_cast<size_t>(count)));
  return !mAtEnd;
}

bool TextInputStream::EOF_() { return mNext == mBuffer.size() && !Fill(); }

Text TextInputStream::ReadLine(std::nullptr_t) {
  size_t looked_at = 0;
  size_t end = std::string::npos;
  do {
    end = mBuffer.find_first_of("\r\n", mNext + looked_at);
    looked_at = mBuffer.size() - mNext;
  } while (end == std::string::npos && looked_at <= kLongestLine && Fill());
  if (end == std::string::npos || end - mNext > kLongestLine) return LastLine();
  Text line = Text::FromBytes(std::string_view(mBuffer).substr(mNext, end - mNext));
  mNext = end + 1;
  if (mBuffer[end] == '\r' && !EOF_() && mBuffer[mNext] == '\n') ++mNext;
  return line;
}

Text TextInputStream::LastLine() {
  Text line = Text::FromBytes(std::string_view(mBuffer).substr(mNext, kLongestLine));
  mNext = mBuffer.size();
  mAtEnd = true;
  return line;
}

Text TextInputStream::_ReadAll() {
  while (Fill()) {
  }
  Text rest = Text::FromBytes(std::string_view(mBuffer).substr(mNext));
  mNext = mBuffer.size();
  return rest;
}

}  // namespace quorvel
