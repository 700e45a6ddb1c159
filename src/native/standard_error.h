#pragma once

#include <string_view>

namespace quorvel {

/// Writes `line` and a line end to `descriptor` when the descriptor takes them at once, and drops
/// them otherwise: a full pipe, a reader that has gone. Line ends within `line` become blanks; a
/// line longer than a pipe takes in one piece (PIPE_BUF) is cut. Never waits, leaves the
/// descriptor's flags alone. From the first call on the process ignores SIGPIPE.
void OfferLine(int descriptor, std::string_view line);

}  // namespace quorvel
