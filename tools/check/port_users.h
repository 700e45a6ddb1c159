#pragma once

#include <vector>

#include "native/network_calls.h"
#include "tools/check/facts.h"

namespace quorvel::check {

/// The other programs that have the UDP port open, by rising number of the process. Programs into
/// which this program may not look, or which are not reached before `deadline`, have no name.
/// Nothing where the system has no /proc.
[[nodiscard]] std::vector<PortUser> FindPortUsers(uint16_t port, SteadyTime deadline);

}  // namespace quorvel::check
