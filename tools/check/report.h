#pragma once

#include <string>

#include "tools/check/facts.h"

namespace quorvel::check {

/// The facts and the findings in plain sentences, with the next thing to try at the end.
[[nodiscard]] std::string InSentences(const Facts& facts);
/// The same as one JSON object with a line end, for programs.
[[nodiscard]] std::string InJson(const Facts& facts);

}  // namespace quorvel::check
