#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <list>
#include <unordered_map>

#include "platform/network/arrival.h"

namespace quorvel {

/// Lets each datagram through once when two interfaces on one network both bring the datagram in.
/// Each sender, an address and a port, is pinned to the interface by which the sender was heard
/// first; copies by other interfaces are dropped. Contents are never compared, for a sender may
/// send the same message twice.
///
/// Between the loss of a link and the notice of the loss, datagrams come in by the other interface
/// alone. Copies since the last original are therefore held, and delivered when the pinned
/// interface turns out to be lost: all but the copy of the last original.
class SenderPins {
 public:
  using Deliver = std::function<void(Arrival&&)>;

  static constexpr std::chrono::seconds kHold{1};
  static constexpr std::chrono::minutes kAge{10};
  static constexpr size_t kMostPins = 65536;
  static constexpr size_t kMostHeld = 1000;

  /// Calls `deliver` with the arrival unless the arrival is a copy. When the pinned interface has
  /// not brought the sender in for more than a second, the pin moves to the arrival's interface,
  /// and copies that are held come first. Arrivals come in the order of their times.
  void Judge(Arrival&& arrival, const Deliver& deliver);
  /// Unpins the senders of an interface that has lost the link, or is gone, and calls `deliver`
  /// with their copies that are held.
  void Unpin(InterfaceIndex interface, const Deliver& deliver);

 private:
  struct Pin {
    uint64_t sender;
    InterfaceIndex interface;
    /// The time of the last original on the two clocks of an arrival, and of the last copy.
    SteadyTime heard;
    std::chrono::nanoseconds original_stamp;
    std::chrono::nanoseconds copy_stamp{};
    /// The interface whose copies count; 0 until a copy has come.
    InterfaceIndex other = 0;
    /// The copies since the last original.
    uint32_t copies = 0;
    /// Whether a copy comes before the original: the wire of `other` is faster.
    bool copy_comes_first = false;
  };
  using Pins = std::list<Pin>;

  static Pin PinOf(const Arrival& arrival);
  Pins::iterator Find(const Arrival& arrival);
  void TakeOriginal(Pin& pin, const Arrival& arrival);
  void TakeCopy(Pin& pin, Arrival&& arrival);
  void Release(const Pin& pin, const Deliver& deliver);
  void Forget(Pins::iterator pin);

  /// The sender heard longest ago comes first.
  Pins mPins;
  std::unordered_map<uint64_t, Pins::iterator> mBySender;
  /// Copies of all senders since their last originals, the oldest first.
  std::list<Arrival> mHeld;
};

}  // namespace quorvel
