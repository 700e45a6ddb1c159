#include "platform/network/sender_pins.h"

#include <iterator>
#include <utility>

namespace quorvel {

namespace {

// How many times nearer one of two originals is to a copy, for the copy to belong to it clearly.
constexpr int kClearly = 4;

}  // namespace

SenderPins::Verdict SenderPins::Search(Arrival& arrival, const Deliver& deliver) {
  const auto pin = Find(arrival);
  while (!mHeld.empty() && arrival.at - mHeld.front().at > kHold) mHeld.pop_front();
  if (pin->interface != arrival.head.interface) {
    if (arrival.at - pin->heard <= kHold) return TakeCopy(*pin, std::move(arrival));
    Release(*pin, deliver);
    *pin = PinOf(arrival);
  }
  mPins.splice(mPins.end(), mPins, pin);
  return TakeOriginal(*pin, arrival);
}

SenderPins::Pin SenderPins::PinOf(const Arrival& arrival) {
  return {SenderOf(arrival), arrival.head.interface, arrival.at, arrival.head.stamp};
}

// The pin of the arrival's sender; a new pin to the arrival's interface for a new sender.
SenderPins::Pins::iterator SenderPins::Find(const Arrival& arrival) {
  while (!mPins.empty() && arrival.at - mPins.front().heard > kAge) Forget(mPins.begin());
  const uint64_t sender = SenderOf(arrival);
  const auto found = mBySender.find(sender);
  if (found != mBySender.end()) return found->second;
  if (mPins.size() == kMostPins) Forget(mPins.begin());
  return mBySender[sender] = mPins.insert(mPins.end(), PinOf(arrival));
}

// A copy between two originals belongs to the nearer original.
SenderPins::Verdict SenderPins::TakeOriginal(Pin& pin, const Arrival& arrival) {
  if (pin.copies == 1) {
    const auto after_original = pin.copy_stamp - pin.original_stamp;
    const auto before_original = arrival.head.stamp - pin.copy_stamp;
    if (before_original * kClearly < after_original) pin.copy_comes_first = true;
    if (after_original * kClearly < before_original) pin.copy_comes_first = false;
  }
  if (pin.copies > 0) Release(pin, [](Arrival&&) {});
  pin.copies = 0;
  return Note(pin, arrival);
}

SenderPins::Verdict SenderPins::TakeCopy(Pin& pin, Arrival&& arrival) {
  if (pin.other == 0) pin.other = arrival.head.interface;
  if (pin.other != arrival.head.interface) return Verdict::Copy;
  pin.copy_stamp = arrival.head.stamp;
  const bool is_of_last_original = ++pin.copies == 1 && !pin.copy_comes_first;
  if (is_of_last_original) return Verdict::Copy;
  if (mHeld.size() == kMostHeld) mHeld.pop_front();
  arrival.data = arrival.data.Compact();
  mHeld.push_back(std::move(arrival));
  return Verdict::Copy;
}

void SenderPins::Release(const Pin& pin, const Deliver& deliver) {
  for (auto held = mHeld.begin(); held != mHeld.end();) {
    const auto next = std::next(held);
    if (SenderOf(*held) == pin.sender) {
      deliver(std::move(*held));
      mHeld.erase(held);
    }
    held = next;
  }
}

void SenderPins::Unpin(InterfaceIndex interface, const Deliver& deliver) {
  for (auto pin = mPins.begin(); pin != mPins.end();) {
    const auto next = std::next(pin);
    if (pin->interface == interface) {
      Release(*pin, deliver);
      Forget(pin);
    } else if (pin->other == interface) {
      Release(*pin, [](Arrival&&) {});
      pin->other = 0;
      pin->copies = 0;
      pin->copy_comes_first = false;
    }
    pin = next;
  }
}

void SenderPins::Forget(Pins::iterator pin) {
  mBySender.erase(pin->sender);
  mPins.erase(pin);
}

}  // namespace quorvel
