#include "platform/values/text.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <random>
#include <string>
#include <vector>

#include "platform/values/numbers.h"

namespace quorvel {
namespace {

std::string Bytes(const Text& text) { return std::string(text.Bytes()); }

TEST(Text, EarlierValuesStayAsTheyWere) {
  const Text stem = Text("log") + ": ";
  const Text first = stem + "one";
  const Text second = stem + "two";
  const Text longer = first + " and more";
  EXPECT_EQ(Bytes(stem), "log: ");
  EXPECT_EQ(Bytes(first), "log: one");
  EXPECT_EQ(Bytes(second), "log: two");
  EXPECT_EQ(Bytes(longer), "log: one and more");
  EXPECT_EQ(Bytes(longer + longer), "log: one and morelog: one and more");
}

// Any mixture of joins and cuts gives what plain strings give. QUORVEL_SEED repeats a run.
TEST(Text, JoinsAndCutsLikePlainStrings) {
  const char* const given = std::getenv("QUORVEL_SEED");
  const unsigned seed =
      given != nullptr ? static_cast<unsigned>(std::atoi(given)) : std::random_device{}();
  SCOPED_TRACE("QUORVEL_SEED=" + std::to_string(seed));
  std::mt19937 random(seed);
  const auto below = [&](size_t limit) { return random() % limit; };
  std::vector<Text> texts(8);
  std::vector<std::string> strings(8);
  for (int step = 0; step < 20000; ++step) {
    const size_t to = below(8);
    const size_t a = below(8);
    const size_t b = below(8);
    if (below(3) > 0 && strings[a].size() + strings[b].size() < 20000) {
      texts[to] = texts[a] + texts[b];
      strings[to] = strings[a] + strings[b];
    } else if (below(4) == 0) {
      strings[to] = std::string(below(300), static_cast<char>(below(256)));
      texts[to] = Text::FromBytes(strings[to]);
    } else {
      const size_t cut = below(strings[a].size() + 2);
      texts[to] = MidB(texts[a], static_cast<int32_t>(cut) + 1);
      strings[to] = cut <= strings[a].size() ? strings[a].substr(cut) : "";
    }
    ASSERT_EQ(Bytes(texts[to]), strings[to]);
  }
}

TEST(Text, JoiningAtTheEndMovesTheBytesRarely) {
  Text log = "first";
  int moves = 0;
  for (int i = 0; i < 20000; ++i) {
    const char* const before = log.Bytes().data();
    log = log + "one more line\n";
    if (log.Bytes().data() != before) ++moves;
  }
  EXPECT_LT(moves, 40);
}

TEST(Text, AStreamLeavesBehindWhatItHasDelivered) {
  const Text delivered = Text::FromBytes(std::string(1 << 20, 'x'));
  const Text rest = MidB(delivered, LenB(delivered) - 9);
  const Text more = rest + "y";
  EXPECT_EQ(Bytes(more), "xxxxxxxxxxy");
  const char* const start = delivered.Bytes().data();
  EXPECT_FALSE(more.Bytes().data() >= start && more.Bytes().data() < start + LenB(delivered));
}

TEST(Text, ExtendsTellsGrowthFromReplacement) {
  const Text log = Text("one\n") + "two\n";
  EXPECT_TRUE((log + "three\n").Extends(log));
  EXPECT_TRUE(log.Extends(log));
  EXPECT_TRUE(log.Extends(""));
  EXPECT_FALSE(log.Extends(log + "x"));
  EXPECT_FALSE(Text("One\ntwo\nthree").Extends(log));
}

TEST(Text, CharactersAreSequencesOrSingleBytes) {
  struct Case {
    std::string bytes;
    std::vector<std::string> characters;
    int32_t first_code;
  };
  const std::vector<Case> cases = {
      {"", {}, 0},
      {"ab", {"a", "b"}, 'a'},
      {"\xC3\xA9t\xC3\xA9", {"\xC3\xA9", "t", "\xC3\xA9"}, 0xE9},
      {"\xE2\x82\xACx", {"\xE2\x82\xAC", "x"}, 0x20AC},
      {"\xF0\x9F\x8E\x93", {"\xF0\x9F\x8E\x93"}, 0x1F393},
      {std::string("a\0b", 3), {"a", std::string(1, '\0'), "b"}, 'a'},
      {"\xE9t", {"\xE9", "t"}, 0xE9},                                // a byte of another encoding
      {"\xC3", {"\xC3"}, 0xC3},                                      // cut short
      {"\xE2\x82", {"\xE2", "\x82"}, 0xE2},                          // cut short
      {"\xC0\xAF", {"\xC0", "\xAF"}, 0xC0},                          // overlong
      {"\xED\xA0\x80", {"\xED", "\xA0", "\x80"}, 0xED},              // a surrogate
      {"\xF4\x90\x80\x80", {"\xF4", "\x90", "\x80", "\x80"}, 0xF4},  // above U+10FFFF
  };
  for (const auto& [bytes, characters, first_code] : cases) {
    SCOPED_TRACE(testing::PrintToString(bytes));
    const Text text = Text::FromBytes(bytes);
    const auto count = static_cast<int32_t>(characters.size());
    EXPECT_EQ(Len(text), count);
    EXPECT_EQ(Asc(text), first_code);
    // Backwards and forwards: the place that was last asked for must not show.
    for (int32_t i = count; i >= 1; --i) {
      EXPECT_EQ(Bytes(Mid(text, i, 1)), characters[static_cast<size_t>(i) - 1]);
      EXPECT_EQ(Bytes(Left(text, i)) + Bytes(Mid(text, i + 1)), bytes);
      EXPECT_EQ(Bytes(Mid(text, 1, count - i)) + Bytes(Right(text, i)), bytes);
    }
  }
}

TEST(Text, PlacesOutsideOfTheText) {
  EXPECT_EQ(Bytes(Mid("abc", 0, 1)), "");
  EXPECT_EQ(Bytes(Mid("abc", -1, 5)), "");
  EXPECT_EQ(Bytes(Mid("abc", 4, 1)), "");
  EXPECT_EQ(Bytes(Mid("abc", 2, 99)), "bc");
  EXPECT_EQ(Bytes(MidB("abc", 0)), "");
  EXPECT_EQ(Bytes(MidB("abc", 2)), "bc");
  EXPECT_EQ(Bytes(MidB("abc", 4)), "");
  EXPECT_EQ(Bytes(Left("abc", 9)), "abc");
  EXPECT_EQ(Bytes(Right("ab", 4)), "ab");
  EXPECT_EQ(Bytes(Right("ab", 0)), "");
}

TEST(Text, ComparesWithoutTheCaseOfAsciiLetters) {
  EXPECT_EQ(Text(".TXT"), ".txt");
  EXPECT_NE(Text("\xC3\x89"), "\xC3\xA9");
  EXPECT_EQ(Text(), "");
  EXPECT_NE(StrComp("a", "A", 0), 0);
  EXPECT_EQ(StrComp("a", "A", 1), 0);
  EXPECT_EQ(StrComp("a", "b", 0), -1);
  EXPECT_EQ(Bytes(Lowercase("QUIZ \xC3\x89 9")), "quiz \xC3\x89 9");
}

TEST(Text, TrimsBlanksOfAllKindsAtBothEnds) {
  EXPECT_EQ(Bytes(Trim(" \t\n\v\f\r a b \r\n")), "a b");
  EXPECT_EQ(Bytes(Trim("     ")), "");
  EXPECT_EQ(Bytes(Trim("\xC2\xA0x")), "\xC2\xA0x");
}

TEST(Text, NumbersInText) {
  EXPECT_EQ(Val("239"), 239);
  EXPECT_EQ(Val("-12.5x"), -12.5);
  EXPECT_EQ(Val(""), 0);
  EXPECT_EQ(Val("x1"), 0);
  EXPECT_EQ(ToInt32(Val("99999999999999999999")), 2147483647);
  EXPECT_EQ(ToInt32(Val(Text::FromBytes(std::string(400, '9')))), 2147483647);
  EXPECT_EQ(ToInt32(-1e300), -2147483647 - 1);
  EXPECT_EQ(Bytes(Str(7)), "7");
  EXPECT_EQ(Bytes(Str(-2147483647 - 1)), "-2147483648");
  EXPECT_TRUE(IsNumeric("7"));
  EXPECT_FALSE(IsNumeric("."));
  EXPECT_FALSE(IsNumeric(""));
  EXPECT_FALSE(IsNumeric("\xD9\xA3"));  // a digit, but none of ours
}

TEST(Text, ConversionLosesNothing) {
  const auto converted = [](const std::string& bytes) {
    return Bytes(ConvertEncoding(Text::FromBytes(bytes), Encodings::UTF8));
  };
  EXPECT_EQ(converted("\xC3\xA9"), "\xC3\xA9");
  EXPECT_EQ(converted("\xE9t\xE9"), "\xC3\xA9t\xC3\xA9");
  EXPECT_EQ(converted("\xC3\xA9\xC3"), "\xC3\xA9\xC3\x83");
  EXPECT_EQ(converted(std::string("a\0\r\n\x80", 5)), std::string("a\0\r\n\xC2\x80", 6));
}

}  // namespace
}  // namespace quorvel
