#pragma once

#include <chrono>
#include <cstdint>
#include <list>
#include <unordered_map>

#include "native/network_calls.h"

namespace quorvel {

/// Tells the second copies of datagrams that two interfaces on one network both bring in. Each
/// sender, an address and a port, is pinned to the interface by which the sender was heard first.
/// Contents are never compared, for a sender may send the same message twice.
class SenderPins {
 public:
  static constexpr std::chrono::seconds kHold{1};
  static constexpr std::chrono::minutes kAge{10};
  static constexpr size_t kMostPins = 65536;

  /// Whether the datagram counts, at the time `now` of its arrival. A datagram by another interface
  /// than the pinned interface counts, and moves the pin, when the sender has not been heard by the
  /// pinned interface for more than a second. `now` never goes back.
  bool Counts(const ReceivedBytes& datagram, SteadyTime now);
  /// Unpins the senders of an interface that has lost the link, or is gone.
  void Unpin(InterfaceIndex interface);

 private:
  struct Pin {
    uint64_t sender;
    InterfaceIndex interface;
    SteadyTime heard;
  };
  void Forget(std::list<Pin>::iterator pin);

  /// The sender heard longest ago comes first.
  std::list<Pin> mPins;
  std::unordered_map<uint64_t, std::list<Pin>::iterator> mBySender;
};

}  // namespace quorvel
