#pragma once

#include <string>
#include <vector>

#include "tools/check/facts.h"

namespace quorvel::check {

/// Something to know about the facts.
struct Finding {
  /// A short name for programs that read the report.
  std::string code;
  /// Whether the finding keeps this computer from hearing some or all messages.
  bool keeps_from_hearing = false;
  /// A plain sentence.
  std::string text;
  /// The next thing to try, in one or several lines.
  std::string advice;
};

/// The findings, the most serious first; never empty. All that is derived from the facts is derived
/// here, so that every form of the report agrees.
[[nodiscard]] std::vector<Finding> Judge(const Facts& facts);
/// Whether a finding keeps this computer from hearing.
[[nodiscard]] bool KeepFromHearing(const std::vector<Finding>& findings);

}  // namespace quorvel::check
