#pragma once

#include <optional>

#include "native/network_calls.h"
#include "platform/values/text.h"

namespace quorvel {

/// The address in a dotted text: four numbers of 0 to 255, decimal even with leading zeros
/// (`docs/group-address.md`). Nothing for a text of any other form.
[[nodiscard]] std::optional<Ipv4Address> ParseIpv4(const Text& dotted);
/// The address as a dotted text, without leading zeros.
[[nodiscard]] Text FormatIpv4(Ipv4Address address);
/// Whether the address lies in 224.0.0.0/4, the addresses of multicast groups.
[[nodiscard]] constexpr bool IsMulticast(Ipv4Address address) { return address >> 28 == 0xE; }

}  // namespace quorvel
