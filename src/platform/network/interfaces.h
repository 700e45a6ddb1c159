#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "native/network_calls.h"

namespace quorvel {

using Interfaces = std::vector<NetworkInterface>;

/// Why groups are not joined on an interface.
enum class Unfit : uint8_t { No, Loopback, SwitchedOff, NoMulticast, NoAddress };
[[nodiscard]] Unfit WhyUnfit(const NetworkInterface& interface);

/// The interfaces on which a group is to be joined: all that are fit, those with a link and a
/// private address first, because a system limits the number of memberships; loopback when no
/// interface is fit.
[[nodiscard]] std::vector<InterfaceIndex> InterfacesToJoin(const Interfaces& all);

/// The interface by which datagrams to groups leave: the first of `default_routes` (the best route
/// first) behind which a network of several computers lies, else the first interface to join. 0
/// when the computer has no interface at all.
[[nodiscard]] InterfaceIndex InterfaceToSend(const Interfaces& all,
                                             const std::vector<InterfaceIndex>& default_routes);

[[nodiscard]] const NetworkInterface* FindInterface(const Interfaces& all, InterfaceIndex index);
[[nodiscard]] bool IsOwnAddress(const Interfaces& all, Ipv4Address address);

/// The differences between two looks at the interfaces, and the notices in between.
struct LinkChanges {
  /// The interface may have missed datagrams: the link was lost, at least for a while, or the
  /// interface is gone or unfit.
  std::vector<InterfaceIndex> lost;
  /// The network behind the interface may have forgotten this computer: the link is back, an
  /// address is new, the interface was made anew, or notices were lost.
  std::vector<InterfaceIndex> renewed;
};
[[nodiscard]] LinkChanges CompareLooks(const Interfaces& before, const Interfaces& after,
                                       const LinkNotices& notices);

}  // namespace quorvel
