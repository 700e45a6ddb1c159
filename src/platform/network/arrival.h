#pragma once

#include <string>

#include "native/network_calls.h"

namespace quorvel {

/// A datagram that has been taken from the system.
struct Arrival {
  /// All but the bytes: `head.bytes` is empty.
  ReceivedBytes head;
  SteadyTime at;
  std::string bytes;
};

}  // namespace quorvel
