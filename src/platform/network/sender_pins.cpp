#include "platform/network/sender_pins.h"

namespace quorvel {

bool SenderPins::Counts(const ReceivedBytes& datagram, SteadyTime now) {
  const uint64_t sender = uint64_t{datagram.from} << 16 | datagram.from_port;
  while (!mPins.empty() && now - mPins.front().heard > kAge) Forget(mPins.begin());
  const auto found = mBySender.find(sender);
  if (found == mBySender.end()) {
    if (mPins.size() == kMostPins) Forget(mPins.begin());
    mBySender[sender] = mPins.insert(mPins.end(), {sender, datagram.interface, now});
    return true;
  }
  const auto pin = found->second;
  if (pin->interface != datagram.interface && now - pin->heard <= kHold) return false;
  *pin = {sender, datagram.interface, now};
  mPins.splice(mPins.end(), mPins, pin);
  return true;
}

void SenderPins::Unpin(InterfaceIndex interface) {
  for (auto pin = mPins.begin(); pin != mPins.end();) {
    const auto next = std::next(pin);
    if (pin->interface == interface) Forget(pin);
    pin = next;
  }
}

void SenderPins::Forget(std::list<Pin>::iterator pin) {
  mBySender.erase(pin->sender);
  mPins.erase(pin);
}

}  // namespace quorvel
