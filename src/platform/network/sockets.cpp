#include "platform/network/sockets.h"

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <limits>
#include <utility>
#include <variant>

#include "native/native.h"
#include "platform/network/ip_address.h"
#include "platform/runtime/runtime.h"

namespace quorvel {

namespace {

constexpr std::chrono::seconds kTick{2};

SocketCalls& Calls() { return HasNative() ? Native().Sockets() : PosixSocketCalls(); }
LinkCalls& LinksOfSystem() { return HasNative() ? Native().Links() : PosixLinkCalls(); }

bool IsNoRoute(int error) {
  return error == ENODEV || error == ENETUNREACH || error == EHOSTUNREACH ||
         error == EADDRNOTAVAIL || error == ENETDOWN || error == ENXIO;
}

bool FailWith(int error) {
  errno = error;
  return false;
}

}  // namespace

bool SocketCore::Note(bool success) {
  mLastErrorCode = success ? 0 : errno;
  return success;
}

// Addresses that differ in their last octets alone, as those of a network, have entries of their
// own.
const Text& AddressTexts::Of(Ipv4Address address) {
  Entry& entry = mEntries[address % mEntries.size()];
  if (entry.text.IsEmpty() || entry.address != address) entry = {address, FormatIpv4(address)};
  return entry.text;
}

UDPSocket::~UDPSocket() { UDPSocket::Close(); }

void UDPSocket::Connect() {
  Close();
  mSocket = Calls().Open(kReceiveBufferBytes);
  if (!Note(mSocket >= 0)) return;
  if (!Note(BindToPort())) {
    Calls().Close(std::exchange(mSocket, -1));
    return;
  }
  ApplyMulticastOptions();
  mLinks = std::make_unique<GroupLinks>(Calls(), LinksOfSystem(), mSocket);
  mLinks->SendBy(mSendInterface);
  if (!mSendOnly) {
    StartReceiving();
    WatchLinks();
  }
  FollowLinks();
}

// Binds the port alone if possible, so that a port that somebody else holds alone is refused, else
// beside sockets that share the port. Later sockets can share the port where the system allows.
bool UDPSocket::BindToPort() {
  if (Port() < 0 || Port() > std::numeric_limits<uint16_t>::max()) return FailWith(EINVAL);
  const auto port = static_cast<uint16_t>(mSendOnly ? 0 : Port());
  const auto bind = [&] { return Calls().Bind(mSocket, port); };
  const auto share_address = [&] { return Calls().ShareAddress(mSocket); };
  const auto share_port = [&] { return Calls().SharePort(mSocket); };
  if (bind()) {
    if (mSendOnly) return true;
    share_address();
    share_port();
    return true;
  }
  if (errno != EADDRINUSE) return false;
  return (share_address() && bind()) || (share_port() && bind()) || FailWith(EADDRINUSE);
}

void UDPSocket::StartReceiving() {
  mReceiver = std::make_unique<Receiver>(Calls(), mSocket);
  const auto watch = [this](int descriptor, void (UDPSocket::*handler)()) {
    if (descriptor < 0) return;
    mWatches.push_back(
        Native().Loop().Watch(descriptor, WhileAlive(*this, handler, Origin::Background)));
  };
  watch(mReceiver->Descriptor(), &UDPSocket::DeliverWaiting);
  if (!mReceiver->HasThread()) watch(mSocket, &UDPSocket::TakeAndDeliver);
}

// The system's notices of changes, and a look every two seconds for all that notices do not tell.
void UDPSocket::WatchLinks() {
  auto& loop = Native().Loop();
  mNotices = LinksOfSystem().OpenNotices();
  if (mNotices >= 0) {
    mWatches.push_back(
        loop.Watch(mNotices, WhileAlive(*this, &UDPSocket::FollowLinks, Origin::Background)));
  }
  mWatches.push_back(loop.Repeat(kTick, WhileAlive(*this, &UDPSocket::Tick, Origin::Background)));
}

// Datagrams that came in before a link was lost are judged by the pins of that time, so they are
// taken in first.
void UDPSocket::FollowLinks() {
  if (!mLinks) return;
  const auto notices = mNotices >= 0 ? LinksOfSystem().ReadNotices(mNotices) : LinkNotices{};
  const auto lost = mLinks->Look(notices);
  if (mReceiver && !lost.empty()) {
    mReceiver->TakeIn();
    for (const InterfaceIndex interface : lost) mReceiver->NoteLostLink(interface);
  }
  mLinks->Rejoin();
}

void UDPSocket::Tick() {
  if (!mLinks) return;
  mLinks->CountQuiet();
  if (mNotices < 0 || mLinks->IsIncomplete()) FollowLinks();
}

void UDPSocket::ApplyMulticastOptions() {
  if (!IsConnected()) return;
  Calls().SetMulticastLoop(mSocket, mSendToSelf);
  Calls().SetMulticastHops(mSocket, mRouterHops);
}

void UDPSocket::SendToSelf(bool on) {
  mSendToSelf = on;
  ApplyMulticastOptions();
}

void UDPSocket::RouterHops(int32_t hops) {
  mRouterHops = hops;
  ApplyMulticastOptions();
}

void UDPSocket::Close() {
  mWatches.clear();
  mReceiver.reset();
  mLinks.reset();
  mReceived.clear();
  mUnread = 0;
  mPins = {};
  mDrops = {};
  mReceiveError = 0;
  if (mNotices >= 0) LinksOfSystem().CloseNotices(std::exchange(mNotices, -1));
  if (IsConnected()) Calls().Close(std::exchange(mSocket, -1));
}

bool UDPSocket::JoinMulticastGroup(const Text& group) {
  const auto address = ParseIpv4(group);
  if (!address || !IsMulticast(*address)) return Note(FailWith(EINVAL));
  if (!mLinks) return Note(FailWith(ENOTCONN));
  FollowLinks();
  return Note(mLinks->Join(*address));
}

void UDPSocket::LeaveMulticastGroup(const Text& group) {
  const auto address = ParseIpv4(group);
  if (!address || !IsMulticast(*address)) {
    Note(FailWith(EINVAL));
    return;
  }
  Note(mLinks ? mLinks->Leave(*address) : FailWith(ENOTCONN));
}

void UDPSocket::Write(const Text& address, const Text& data) {
  const auto to = ParseIpv4(address);
  Note(to ? Send(*to, data) : FailWith(EINVAL));
}

void UDPSocket::Write(const Ref<Datagram>& datagram) {
  UDPSocket::Write(datagram->Address(), datagram->Data());
}

bool UDPSocket::Send(Ipv4Address to, const Text& data) {
  if (!IsConnected()) return FailWith(ENOTCONN);
  if (IsMulticast(to)) return SendToGroup(to, data);
  return Calls().Send(mSocket, to, static_cast<uint16_t>(Port()), data.Bytes());
}

// An interface may have gone since the last look.
bool UDPSocket::SendToGroup(Ipv4Address group, const Text& data) {
  const auto send = [&] {
    return mLinks->PrepareSend() &&
           Calls().Send(mSocket, group, static_cast<uint16_t>(Port()), data.Bytes());
  };
  if (mSendOnly && mLinks->LacksNetwork()) FollowLinks();
  if (send()) return true;
  if (!IsNoRoute(errno)) return false;
  mLinks->DistrustSending();
  FollowLinks();
  return send();
}

Ref<Datagram> UDPSocket::Read(std::nullptr_t) {
  if (mReceived.empty()) return Nil;
  // A datagram that the caller holds no more takes the next contents.
  if (mRead.Shared().use_count() != 1) mRead = New<Datagram>();
  Unread& oldest = *(mReceived.end() - mUnread);
  mRead->_Assign(mAddresses.Of(oldest.from), std::move(oldest.data));
  if (--mUnread == 0) mReceived.clear();
  return mRead;
}

void UDPSocket::DeliverWaiting() { DeliverBatch(); }

void UDPSocket::TakeAndDeliver() {
  if (mReceiver) mReceiver->TakeIn();
  DeliverBatch();
}

inline void UDPSocket::Accept(Arrival&& arrival) {
  Heard(arrival.head);
  mReceived.push_back({arrival.head.from, std::move(arrival.data)});
  ++mUnread;
}

inline void UDPSocket::Judge(Arrival&& arrival, const SenderPins::Deliver& accept_copy) {
  const DatagramHead& head = arrival.head;
  const bool to_group = IsMulticast(head.to);
  if (head.broadcast || (to_group && !mLinks->Wants(head.to))) {
    ++mDrops.foreign;
  } else if (to_group) {
    mLinks->Heard(head.from, head.interface);
    if (mPins.Judge(arrival, accept_copy) == SenderPins::Verdict::Original) {
      Accept(std::move(arrival));
    } else {
      ++mDrops.doubles;
    }
  } else {
    Accept(std::move(arrival));
  }
}

UDPSocket::Delivery UDPSocket::DeliverBatch() {
  if (!mReceiver) return Delivery::Nothing;
  const auto [batch, bytes] = mReceiver->Take();
  const Text all = Text::FromBytes(bytes);
  const SenderPins::Deliver accept_copy = AcceptingCopies();
  size_t offset = 0;
  for (const Received& received : batch) {
    if (const auto* const datagram = std::get_if<ReceivedDatagram>(&received)) {
      Judge({datagram->head, datagram->at, all.ByteRange(offset, datagram->length)}, accept_copy);
      offset += datagram->length;
    } else if (const auto* const lost = std::get_if<LostLink>(&received)) {
      mPins.Unpin(lost->interface, accept_copy);
    } else {
      Fail(std::get<ReceiveFailure>(received).error);
    }
  }
  if (!mReceived.empty()) Event_DataAvailable();
  mRead = Nil;  // keeps the bytes of the whole batch
  return batch.empty() ? Delivery::Nothing : Delivery::Batch;
}

void UDPSocket::Fail(int error) {
  mReceiveError = error;
  mLastErrorCode = error;
  Event_Error();
}

// A copy turns out to be the only datagram.
SenderPins::Deliver UDPSocket::AcceptingCopies() {
  return [this](Arrival&& arrival) {
    --mDrops.doubles;
    Accept(std::move(arrival));
  };
}

void UDPSocket::Poll() {
  const auto keep = shared_from_this();
  if (mReceiver) mReceiver->TakeIn();
  size_t left = mReceiver ? mReceiver->Waiting() : 0;
  for (; mReceiver && left > 0; left -= std::min(left, Receiver::kBatch)) {
    if (DeliverBatch() == Delivery::Nothing) break;
  }
  mLastErrorCode = IsConnected() ? std::exchange(mReceiveError, 0) : ENOTCONN;
}

Interfaces UDPSocket::NetworkInterfaces() const { return mLinks ? mLinks->All() : Interfaces{}; }

std::map<InterfaceIndex, int> UDPSocket::Joins(Ipv4Address group) const {
  return mLinks ? mLinks->Joins(group) : std::map<InterfaceIndex, int>{};
}

DropCounts UDPSocket::Drops() const {
  DropCounts drops = mDrops;
  if (mReceiver) {
    drops.waiting = mReceiver->DroppedHere();
    drops.by_system = mReceiver->DroppedBySystem();
  }
  return drops;
}

size_t UDPSocket::ReceiveBufferBytes() const {
  return IsConnected() ? Calls().ReceiveBufferBytes(mSocket) : 0;
}

void UDPSocket::Heard(const DatagramHead&) {}

}  // namespace quorvel
