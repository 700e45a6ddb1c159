#pragma once

#include <QString>
#include <string_view>

#include "native/qt/view/piece.h"

namespace quorvel::qt {

/// How a search goes on: `Typed` stays at a hit that the text meets after another character.
enum class FindStep : uint8_t { Typed, Next, Previous };

struct FindResult {
  bool found = false;
  /// The search came to the end, or to the begin, of the text and went on from the other side.
  bool went_round = false;
  Range hit;
};

/// Looks for `wanted` from the selected text on, through the whole of `text`.
[[nodiscard]] FindResult FindIn(std::string_view text, Range selected, const QString& wanted,
                                bool match_case, FindStep step);

}  // namespace quorvel::qt
