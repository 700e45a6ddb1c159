// Texts, numbers, blocks and dictionaries.

#include <gtest/gtest.h>

#include <algorithm>
#include <limits>
#include <string>
#include <utility>
#include <vector>

#include "platform/values/dictionary.h"
#include "platform/values/exceptions.h"
#include "platform/values/memory_block.h"
#include "platform/values/numbers.h"
#include "platform/values/text.h"
#include "support/random.h"

namespace quorvel {
namespace {

std::string Bytes(const Text& text) { return std::string(text.Bytes()); }

// A text beside the plain string that the text is to equal.
struct Pair {
  Text text;
  std::string plain;
};

// Random joins, cuts, conversions and blocks of texts equal those of plain strings, and change no
// other text. Some texts are larger than a mebibyte, and so lie in reserved memory.
// QUORVEL_SEED repeats a run.
TEST(Text, JoinsAndCutsLikePlainStrings) {
  constexpr size_t kMost = size_t{3} << 20;
  Random random;
  const auto below = [&](size_t limit) { return random.Below(limit); };
  const auto flipped = [](char byte) { return static_cast<char>(~byte); };
  std::vector<Pair> all(8);
  for (int step = 0; step < 10000; ++step) {
    Pair &to = all[below(8)], &a = all[below(8)], &b = all[below(8)];
    const size_t size = a.plain.size(), cut = below(size + 1), count = below(size + 1);
    const bool fits = size + b.plain.size() < (below(10) == 0 ? kMost : 20000);
    const size_t kind = below(12);
    if (kind < 4 && fits) {
      const Text joined = a.text + b.text;
      ASSERT_TRUE(joined.Extends(a.text) && joined.Extends(Text()));
      ASSERT_TRUE(b.plain.empty() || !a.text.Extends(joined));
      to = {joined, a.plain + b.plain};
    } else if (kind < 6 && fits) {
      a.text += b.text;
      a.plain += std::string(b.plain);
    } else if (kind == 6) {
      to.plain.assign(step % 40 == 0 ? kMost / 3 : below(300), static_cast<char>(below(256)));
      to.text = Text::FromBytes(to.plain);
    } else if (kind < 9) {
      to = {MidB(a.text, static_cast<int64_t>(cut) + 1).Compact(), a.plain.substr(cut)};
    } else if (kind == 9) {
      to = {a.text.ByteRange(cut, count), a.plain.substr(cut, count)};
    } else if (kind == 10 && cut + 4 <= size) {
      MemoryBlock block(LenB(a.text));
      block.StringValue(0, block.Size(), a.text);
      block.Long(static_cast<int32_t>(cut), 0);
      to = {block.StringValue(0, block.Size()), std::string(a.plain).replace(cut, 4, 4, '\0')};
    } else {
      to = {a.text.Mapped(flipped), a.plain};
      std::ranges::transform(to.plain, to.plain.begin(), flipped);
    }
    for (const Pair* const pair : {&to, &a, &b}) ASSERT_EQ(pair->text.Bytes(), pair->plain) << step;
  }
}

TEST(Text, JoiningAtTheEndMovesTheBytesRarelyAndThoseOfALargeTextNever) {
  Text log = "first";
  int moves = 0;
  for (int i = 0; i < 400000; ++i) {
    const Text shared = log;
    log = shared + "one more line\n";
    const bool moved = log.Bytes().data() != shared.Bytes().data();
    moves += moved;
    ASSERT_FALSE(moved && log.Bytes().size() > size_t{2} << 20);
  }
  EXPECT_LT(moves, 40);
  // A join to the short rest of a long text moves to a new buffer, and frees the long buffer.
  const Text rest = MidB(log, LenB(log) - 9);
  EXPECT_NE((rest + "y").Bytes().data(), rest.Bytes().data());
}

TEST(Text, CharactersAreSequencesOrSingleBytes) {
  using Case = std::pair<std::vector<std::string>, int32_t>;
  // Behind the valid sequences: another encoding, a sequence cut short, an overlong form, a
  // surrogate, and a code above U+10FFFF.
  for (const auto& [characters, first_code] :
       {Case{{}, 0}, Case{{"\xC3\xA9", "t", "\xC3\xA9"}, 0xE9}, Case{{"\xE2\x82\xAC", "x"}, 0x20AC},
        Case{{"\xF0\x9F\x8E\x93"}, 0x1F393}, Case{{"\xE9", "t"}, 0xE9},
        Case{{"\xE2", "\x82"}, 0xE2}, Case{{"\xC0", "\xAF"}, 0xC0},
        Case{{"\xED", "\xA0", "\x80"}, 0xED}, Case{{"\xF4", "\x90", "\x80", "\x80"}, 0xF4}}) {
    std::string bytes;
    for (const auto& character : characters) bytes += character;
    const Text text = Text::FromBytes(bytes);
    const auto count = static_cast<int32_t>(characters.size());
    EXPECT_EQ(Len(text), count);
    EXPECT_EQ(Asc(text), first_code);
    // Backwards and forwards: the remembered position of the last access must not change results.
    for (int32_t i = count; i >= 1; --i) {
      EXPECT_EQ(Bytes(Mid(text, i, 1)), characters[static_cast<size_t>(i) - 1]);
      EXPECT_EQ(Bytes(Left(text, i)) + Bytes(Mid(text, i + 1)), bytes);
      EXPECT_EQ(Bytes(Mid(text, 1, count - i)) + Bytes(Right(text, i)), bytes);
    }
  }
}

TEST(Text, CutsOutsideOfTheTextAndTrims) {
  using Case = std::pair<Text, const char*>;
  for (const auto& [text, bytes] :
       {Case{Mid("abc", 0, 1), ""}, Case{Mid("abc", -1, 5), ""}, Case{Mid("abc", 4, 1), ""},
        Case{Mid("abc", 2, 99), "bc"}, Case{MidB("abc", 0), ""}, Case{Left("abc", 9), "abc"},
        Case{Right("ab", 4), "ab"}, Case{Right("ab", 0), ""},
        Case{Trim(" \t\n\v\f\r a b \r\n"), "a b"}, Case{Trim("     "), ""},
        Case{Trim("\xC2\xA0x"), "\xC2\xA0x"}}) {
    EXPECT_EQ(text.Bytes(), bytes);
  }
}

TEST(Text, FoldsTheCaseOfAsciiLettersAlone) {
  EXPECT_EQ(Text(".TXT"), ".txt");
  EXPECT_NE(Text("\xC3\x89"), "\xC3\xA9");
  EXPECT_EQ(Bytes(Lowercase("QUIZ \xC3\x89 9")), "quiz \xC3\x89 9");
}

TEST(Text, ValIsTheDoubleNearestToTheNumberInFrontOfAsciiDigits) {
  using Case = std::pair<std::string, double>;
  for (const auto& [text, number] :
       {Case{" -12.5x", -12.5}, Case{"+5", 5}, Case{"-.5", -.5}, Case{"", 0}, Case{"--5", 0},
        Case{"1.2.3", 1.2}, Case{"1e3", 1}, Case{"0x1F", 0}, Case{"inf", 0},
        Case{"-969.85461708", -969.85461708}, Case{"84393198266404899", 84393198266404899.},
        Case{"-" + std::string(400, '9'), -std::numeric_limits<double>::infinity()}}) {
    EXPECT_EQ(Val(Text::FromBytes(text)), number) << text;
  }
  EXPECT_EQ(ToInt32(Val("99999999999999999999")), 2147483647);
  EXPECT_TRUE(IsNumeric("7"));
  // The last text is a digit, but none of ASCII.
  for (const char* const text : {".", "", "\xD9\xA3"}) EXPECT_FALSE(IsNumeric(text)) << text;
}

TEST(MemoryBlock, IntegersInBothByteOrdersWithinTheBlock) {
  constexpr int32_t kDoesNotFit = 2147483647;
  MemoryBlock block(6);
  block.LittleEndian(false);
  block.Long(2, -2);
  EXPECT_EQ(Bytes(block.StringValue(0, 6)), std::string("\0\0\xFF\xFF\xFF\xFE", 6));
  block.LittleEndian(true);
  EXPECT_EQ(block.Long(1), -256);
  for (const int32_t offset : {3, -1, kDoesNotFit}) EXPECT_EQ(block.Long(offset), kDoesNotFit);
  EXPECT_THROW(block.Long(3, 1), OutOfBoundsException);
  EXPECT_THROW(MemoryBlock(-1), OutOfBoundsException);
  EXPECT_EQ(block.StringValue(8, -8).Bytes(), "");
  EXPECT_EQ(block.StringValue(4, kDoesNotFit).Bytes(), "\xFF\xFE");
  EXPECT_THROW(block.StringValue(5, 2, "xy"), OutOfBoundsException);
}

TEST(Dictionary, NumbersKeysInTheOrderOfFirstAssignment) {
  Dictionary senders;
  senders.Value("10.0.0.2", "b");
  senders.Value("10.0.0.1", "a");
  senders.Value("10.0.0.2", "c");
  EXPECT_EQ(senders.Count(), 2);
  EXPECT_EQ(senders.Key(0).Bytes(), "10.0.0.2");
  EXPECT_EQ(senders.Value("10.0.0.2").Bytes(), "c");
  EXPECT_EQ(senders.Lookup("10.0.0.3", "none").Bytes(), "none");
  EXPECT_THROW(static_cast<void>(senders.Value("10.0.0.3")), KeyNotFoundException);
  EXPECT_THROW(static_cast<void>(senders.Key(2)), OutOfBoundsException);
  Dictionary copy = senders;
  senders = Dictionary();
  EXPECT_EQ(copy.Append("10.0.0.1", "b"), 1);
  EXPECT_EQ(copy.Append("10.0.0.3", "d"), 2);
  EXPECT_EQ(copy.Value("10.0.0.1").Bytes(), "ab");
}

}  // namespace
}  // namespace quorvel
