#pragma once

#include <optional>

#include "native/system_calls.h"
#include "platform/values/text.h"

namespace quorvel {

/// The address that a dotted text names: four decimal octets of 0 to 255, leading zeros allowed
/// and never octal. Nothing when it has another form (`docs/group-address.md`).
[[nodiscard]] std::optional<Ipv4Address> ParseIpv4(const Text& dotted);
/// Without leading zeros.
[[nodiscard]] Text FormatIpv4(Ipv4Address address);
/// Whether it lies in 224.0.0.0/4.
[[nodiscard]] bool IsMulticast(Ipv4Address address);

}  // namespace quorvel
