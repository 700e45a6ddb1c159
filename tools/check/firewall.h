#pragma once

#include <optional>
#include <string>

#include "native/network_calls.h"
#include "tools/check/facts.h"

namespace quorvel::check {

/// What the firewall of this computer does with datagrams to the UDP port, as `nft` tells, or
/// `iptables` where `nft` tells of no filter. Nothing where neither program is installed, permitted
/// to look, and done before `deadline`.
[[nodiscard]] std::optional<Firewall> LookAtFirewall(uint16_t port, SteadyTime deadline);

}  // namespace quorvel::check
