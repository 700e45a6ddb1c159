// What a view of a text needs to know about the bytes: where layout may begin, and where a searched
// text stands.

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "native/text/search.h"
#include "native/text/stretches.h"
#include "native/text/utf8.h"
#include "support/random.h"

namespace quorvel {
namespace {

std::string RandomText(Random& random, size_t parts) {
  constexpr std::string_view kKinds[] = {
      "\n", "\r\n", "\r", "a word and another ", "\u05E9\u05DC\u05D5\u05DD", "\xFF\x80", "\n\n"};
  constexpr std::string_view kLong[] = {"x", "\t", "\u20AC", "some words "};
  std::string text;
  for (size_t i = 0; i < parts; ++i) {
    const bool is_long = random.Below(10) == 0;
    const auto part = is_long ? kLong[random.Below(4)] : kKinds[random.Below(std::size(kKinds))];
    const size_t bytes = is_long ? random.Below(60000) : part.size();
    for (const size_t end = text.size() + bytes; text.size() < end;) text += part;
  }
  return text;
}

// The stretches as they follow from the line ends, each line read from its begin.
std::vector<size_t> LineStarts(const std::string& text) {
  std::vector<size_t> starts = {0};
  for (size_t at = 0; at < text.size(); ++at) {
    const bool ends = text[at] == '\n' || (text[at] == '\r' && text[at + 1] != '\n');
    if (ends && at + 1 < text.size()) starts.push_back(at + 1);
  }
  return starts;
}

TEST(Stretches, AreLinesOrPiecesOfLongLinesWhereverTheSearchBegins) {
  Random random;
  for (int run = 0; run < 10; ++run) {
    const std::string text = RandomText(random, 60);
    std::vector<size_t> begins;
    for (size_t at = 0; at < text.size();) {
      const Stretch stretch = StretchAt(text, at);
      ASSERT_EQ(stretch.begin, at);
      ASSERT_LT(at, stretch.next);
      ASSERT_LE(stretch.next - at, 2 * kStretch + 2);
      const size_t length = stretch.next - at;
      for (const size_t inside :
           {at + random.Below(length), at + random.Below(std::min<size_t>(length, 9)),
            stretch.next - 1}) {
        ASSERT_EQ(StretchAt(text, inside).begin, at) << inside;
        ASSERT_EQ(StretchAt(text, inside).next, stretch.next) << inside;
      }
      // Text that comes later changes no stretch but the last.
      const std::string_view before = std::string_view(text).substr(0, stretch.next + 300);
      ASSERT_EQ(StretchAt(before, at).begin, at);
      ASSERT_EQ(StretchAt(before, at).next, stretch.next);
      begins.push_back(at);
      at = stretch.next;
    }
    const auto starts = LineStarts(text);
    EXPECT_TRUE(std::ranges::includes(begins, starts));
    for (size_t i = 1; i < begins.size(); ++i) {
      if (std::ranges::binary_search(starts, begins[i])) continue;
      EXPECT_GE(begins[i] - begins[i - 1], kStretch - 256) << "a short line was cut";
      const std::string_view rest = std::string_view(text).substr(begins[i] - 1, 4);
      EXPECT_TRUE(DecodeUtf8(rest).length == 1) << "a character was cut";
    }
    ASSERT_FALSE(begins.empty());
    EXPECT_EQ(StretchAt(text, text.size()).begin, begins.back());
  }
}

TEST(Search, FindsTheFirstAndTheLastHit) {
  Random random;
  for (int run = 0; run < 300; ++run) {
    std::string text(random.Below(2000), ' ');
    for (char& letter : text) letter = "abAB"[random.Below(4)];
    std::string wanted(1 + random.Below(8), ' ');
    for (char& letter : wanted) letter = "ab"[random.Below(2)];
    std::vector<Needle::Character> characters;  // of which the a stands for A too
    for (const char letter : wanted) {
      characters.emplace_back(std::string(1, letter), letter == 'a' ? "A" : "b");
    }
    const Needle needle(characters);
    const size_t at = random.Below(text.size() + 2);
    std::string folded = text;
    std::ranges::replace(folded, 'A', 'a');
    EXPECT_EQ(needle.FirstIn(text, at).value_or(std::string::npos), folded.find(wanted, at));
    const size_t last =
        at < wanted.size() ? std::string::npos : folded.rfind(wanted, at - wanted.size());
    EXPECT_EQ(needle.LastIn(text, at).value_or(std::string::npos), last);
  }
  for (size_t at = 134450; at < 134480; ++at) {
    std::string text(200000, 'c');
    text[at] = 'a';
    EXPECT_EQ(Needle({{"a", "a"}, {"c", "c"}, {"c", "c"}}).LastIn(text, text.size()), at);
  }
  const Needle umlaut({{"\u00E4", "\u00C4"}, {"\u0440", "\u0420"}});
  EXPECT_EQ(umlaut.FirstIn("\u00C4\u0420 \u00E4\u0440", 1), 5U);
  EXPECT_EQ(umlaut.FirstIn("\u00C4\xD1\xA0 \u00E4\xD0\x80", 0), std::nullopt);
}

}  // namespace
}  // namespace quorvel
