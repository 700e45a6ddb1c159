#include "native/qt/view/finder.h"

#include <algorithm>

#include "native/text/search.h"

namespace quorvel::qt {

namespace {

Needle::Character BothCases(const QString& character) {
  const std::string same = character.toStdString();
  const Needle::Character both(character.toLower().toStdString(),
                               character.toUpper().toStdString());
  const bool equal_lengths = both.first.size() == same.size() && both.second.size() == same.size();
  return equal_lengths ? both : Needle::Character(same, same);
}

Needle NeedleOf(const QString& wanted, bool match_case) {
  std::vector<Needle::Character> characters;
  for (const uint code : wanted.toUcs4()) {
    const QString character = QString::fromUcs4(reinterpret_cast<const char32_t*>(&code), 1);
    const std::string same = character.toStdString();
    characters.push_back(match_case ? Needle::Character(same, same) : BothCases(character));
  }
  return Needle(characters);
}

}  // namespace

FindResult FindIn(std::string_view text, Range selected, const QString& wanted, bool match_case,
                  FindStep step) {
  const Needle needle = NeedleOf(wanted, match_case);
  const size_t past = selected.IsEmpty() ? 0 : 1;
  std::optional<size_t> hit;
  std::optional<size_t> hit_of_all;
  if (step == FindStep::Previous) {
    hit = needle.LastIn(text, selected.end - past);
    if (!hit) hit_of_all = needle.LastIn(text, text.size());
  } else {
    hit = needle.FirstIn(text, selected.begin + (step == FindStep::Next ? past : 0));
    if (!hit) hit_of_all = needle.FirstIn(text, 0);
  }
  if (!hit && !hit_of_all) return {};
  const size_t begin = hit.value_or(hit_of_all.value_or(0));
  return {true, !hit, {begin, begin + needle.Size()}};
}

}  // namespace quorvel::qt
