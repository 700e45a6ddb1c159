#pragma once

#include <cstdint>

/// The facts that senders and listeners of a channel share (`docs/group-address.md`,
/// `docs/wire-format.md`).
namespace quorvel {

/// The UDP port of every datagram.
inline constexpr int32_t kPort = 5563;
/// The fewest characters of a key, the name from which the channel's group address is derived.
inline constexpr int32_t kShortestKey = 5;

}  // namespace quorvel
