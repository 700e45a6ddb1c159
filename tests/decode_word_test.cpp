#include "log/decode_word.h"

#include <gtest/gtest.h>

#include <string>

namespace quorvel {
namespace {

std::string Decoded(const std::string& bytes) {
  return std::string(mGlobals::mDecodeWordReverse(Text::FromBytes(bytes)).Bytes());
}

TEST(DecodeWord, MirrorsLettersAndDigitsAlone) {
  EXPECT_EQ(Decoded("Svool, Dliow 7992 @[`{/: mM\n"), "Hello, World 2007 @[`{/: nN\n");
  std::string bytes;
  for (int i = 0; i < 256; ++i) bytes += static_cast<char>(i);
  EXPECT_EQ(Decoded(Decoded(bytes)), bytes);
  EXPECT_EQ(Decoded(bytes).substr(128), bytes.substr(128));
}

}  // namespace
}  // namespace quorvel
