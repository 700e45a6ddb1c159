#pragma once

#include "native/network_calls.h"
#include "platform/values/text.h"

namespace quorvel {

/// A datagram on the event loop's way to the program.
struct Arrival {
  DatagramHead head;
  SteadyTime at;
  Text data;
};

}  // namespace quorvel
