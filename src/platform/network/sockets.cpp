#include "platform/network/sockets.h"

#include <algorithm>
#include <cerrno>
#include <limits>

#include "native/native.h"
#include "platform/network/ip_address.h"
#include "platform/runtime/runtime.h"

namespace quorvel {

namespace {

constexpr int kReceiveBufferBytes = 4 * 1024 * 1024;
constexpr InterfaceIndex kSystemChoice = 0;
// The limit of a poll: a flood of datagrams must leave the program time for everything else.
constexpr int kBatchesPerPoll = 64;

SocketCalls& Calls() { return HasNative() ? Native().Sockets() : PosixSocketCalls(); }

bool IsNoRoute(int error) {
  return error == ENODEV || error == ENETUNREACH || error == EHOSTUNREACH || error == EADDRNOTAVAIL;
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
  if (mSendOnly) return;
  mBatch = std::make_unique<ReceiveBatch>();
  mWatch = Native().Loop().Watch(mSocket,
                                 WhileAlive(*this, &UDPSocket::DeliverBatch, Origin::Background));
}

// Binds the port alone if possible, else beside the sockets that hold the port and share. Either
// way, later sockets can share the port.
bool UDPSocket::BindToPort() {
  if (Port() < 0 || Port() > std::numeric_limits<uint16_t>::max()) return FailWith(EINVAL);
  const auto port = static_cast<uint16_t>(mSendOnly ? 0 : Port());
  if (Calls().Bind(mSocket, port)) return mSendOnly || Calls().SharePort(mSocket);
  return errno == EADDRINUSE && Calls().SharePort(mSocket) && Calls().Bind(mSocket, port);
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
  mWatch.reset();
  mReceived.clear();
  mJoined.clear();
  if (IsConnected()) Calls().Close(std::exchange(mSocket, -1));
}

bool UDPSocket::JoinMulticastGroup(const Text& group) {
  const auto address = ParseIpv4(group);
  if (!address || !IsMulticast(*address)) return Note(FailWith(EINVAL));
  if (Calls().Join(mSocket, *address, kSystemChoice)) {
    mJoined[*address].push_back(kSystemChoice);
    return Note(true);
  }
  return Note(IsNoRoute(errno) && JoinOnEachInterface(*address));
}

bool UDPSocket::JoinOnEachInterface(Ipv4Address group) {
  bool joined = false;
  int error = ENODEV;
  for (const InterfaceIndex interface : Calls().UsableInterfaces()) {
    if (Calls().Join(mSocket, group, interface)) {
      mJoined[group].push_back(interface);
      joined = true;
    } else {
      error = errno;
    }
  }
  return joined || FailWith(error);
}

void UDPSocket::LeaveMulticastGroup(const Text& group) {
  const auto address = ParseIpv4(group);
  if (!address || !IsMulticast(*address)) {
    Note(FailWith(EINVAL));
    return;
  }
  const auto joined = mJoined.extract(*address);
  const auto interfaces = joined ? joined.mapped() : std::vector{kSystemChoice};
  int error = 0;
  for (const InterfaceIndex interface : interfaces) {
    if (!Calls().Leave(mSocket, *address, interface)) error = errno;
  }
  Note(error == 0 || FailWith(error));
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
  if (Calls().Send(mSocket, to, static_cast<uint16_t>(Port()), data.Bytes())) return true;
  return IsNoRoute(errno) && IsMulticast(to) && SendOnEachInterface(to, data);
}

// Only the first interface's datagram comes back to the sending host: a listener on the sending
// host hears the datagram once.
bool UDPSocket::SendOnEachInterface(Ipv4Address group, const Text& data) {
  bool sent = false;
  int error = ENETUNREACH;
  for (const InterfaceIndex interface : Calls().UsableInterfaces()) {
    Calls().SetMulticastInterface(mSocket, interface);
    Calls().SetMulticastLoop(mSocket, mSendToSelf && !sent);
    if (Calls().Send(mSocket, group, static_cast<uint16_t>(Port()), data.Bytes())) {
      sent = true;
    } else {
      error = errno;
    }
  }
  Calls().SetMulticastInterface(mSocket, kSystemChoice);
  Calls().SetMulticastLoop(mSocket, mSendToSelf);
  return sent || FailWith(error);
}

Ref<Datagram> UDPSocket::Read(std::nullptr_t) {
  if (mReceived.empty()) return Nil;
  auto oldest = mReceived.front();
  mReceived.pop_front();
  return oldest;
}

bool UDPSocket::ReceiveBatchOnce() {
  if (!Calls().Receive(mSocket, *mBatch)) return false;
  for (const auto& [from, bytes] : mBatch->Received()) {
    mReceived.push_back(New<Datagram>(FormatIpv4(from), Text::FromBytes(bytes)));
  }
  return true;
}

UDPSocket::Delivery UDPSocket::DeliverBatch() {
  if (!IsConnected() || !mBatch) return Delivery::Nothing;
  if (!ReceiveBatchOnce()) {
    const bool idle = errno == EAGAIN || errno == EWOULDBLOCK || errno == EINTR;
    if (!Note(idle)) Event_Error();
    return Delivery::Nothing;
  }
  Note(true);
  Event_DataAvailable();
  return Delivery::Batch;
}

void UDPSocket::Poll() {
  const auto keep = shared_from_this();
  int batches = 0;
  while (batches < kBatchesPerPoll && DeliverBatch() == Delivery::Batch) ++batches;
}

}  // namespace quorvel
