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
  enum class Verdict : uint8_t { Original, Copy };

  static constexpr std::chrono::seconds kHold{1};
  static constexpr std::chrono::minutes kAge{10};
  static constexpr size_t kMostPins = 65536;
  static constexpr size_t kMostHeld = 1000;

  /// Tells whether the arrival is an original, which the caller then delivers, or a copy, which
  /// these pins then take. When the pinned interface has not brought the sender in for more than a
  /// second, the pin moves to the arrival's interface, and `deliver` is called with copies that are
  /// held. Arrivals come in the order of their times.
  [[nodiscard]] Verdict Judge(Arrival& arrival, const Deliver& deliver) {
    return IsNextOfLast(arrival) ? Note(mPins.back(), arrival) : Search(arrival, deliver);
  }
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

  static uint64_t SenderOf(const Arrival& arrival) {
    return uint64_t{arrival.head.from} << 16 | arrival.head.from_port;
  }
  static Pin PinOf(const Arrival& arrival);
  // Whether the arrival is the next original of the sender heard last, with no copy in between.
  [[nodiscard]] bool IsNextOfLast(const Arrival& arrival) const {
    if (mPins.empty() || !mHeld.empty()) return false;
    const Pin& last = mPins.back();
    return last.sender == SenderOf(arrival) && last.interface == arrival.head.interface &&
           last.copies == 0;
  }
  static Verdict Note(Pin& pin, const Arrival& arrival) {
    pin.heard = arrival.at;
    pin.original_stamp = arrival.head.stamp;
    return Verdict::Original;
  }
  Verdict Search(Arrival& arrival, const Deliver& deliver);
  Pins::iterator Find(const Arrival& arrival);
  Verdict TakeOriginal(Pin& pin, const Arrival& arrival);
  Verdict TakeCopy(Pin& pin, Arrival&& arrival);
  void Release(const Pin& pin, const Deliver& deliver);
  void Forget(Pins::iterator pin);

  /// The sender heard longest ago comes first.
  Pins mPins;
  std::unordered_map<uint64_t, Pins::iterator> mBySender;
  /// Copies of all senders since their last originals, the oldest first.
  std::list<Arrival> mHeld;
};

}  // namespace quorvel
