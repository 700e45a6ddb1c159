#pragma once

#include <optional>
#include <string>
#include <vector>

#include "native/network_calls.h"

namespace quorvel::check {

/// The standard output of a program, which is looked for in PATH and in the folders of the
/// administrator's programs. Nothing when the program is not installed, fails (as a program without
/// permission does) or has not ended before `deadline`; a late program is killed.
[[nodiscard]] std::optional<std::string> OutputOf(const std::vector<std::string>& command,
                                                  SteadyTime deadline);

}  // namespace quorvel::check
