#include "tools/check/listener.h"

#include <netinet/in.h>
#include <sys/socket.h>

#include <algorithm>

#include "messaging/channel.h"
#include "native/native.h"
#include "platform/network/ip_address.h"
#include "platform/runtime/runtime.h"

namespace quorvel::check {

namespace {

/// A socket that sends by one interface alone.
class ProbeSocket : public UDPSocket {
 public:
  explicit ProbeSocket(const std::string& interface) {
    SendOnly(true);
    SendInterface(interface);
    Port(kPort);
    UDPSocket::Connect();
  }
  /// The port from which the probe leaves; 0 when unknown.
  [[nodiscard]] uint16_t LocalPort() const {
    sockaddr_in local{};
    socklen_t size = sizeof local;
    const bool known = getsockname(mSocket, reinterpret_cast<sockaddr*>(&local), &size) == 0;
    return known ? ntohs(local.sin_port) : uint16_t{0};
  }
};

// Linux reports twice the granted size, for the system's own bookkeeping.
size_t Granted(size_t reported) {
#ifdef __linux__
  return reported / 2;
#else
  return reported;
#endif
}

}  // namespace

void Listener::Start(const Text& key) {
  mGroup = HashGroupNameToIP(key);
  Bind(kPort);
  mOpenError = IsConnected() ? 0 : LastErrorCode();
  Register(key);
  for (const NetworkInterface& interface : NetworkInterfaces()) SendProbe(interface);
}

void Listener::SendProbe(const NetworkInterface& interface) {
  const auto joins = Joins(ParseIpv4(mGroup).value_or(0));
  const auto join = joins.find(interface.index);
  if (join == joins.end() || join->second != 0) return;
  const auto socket = New<ProbeSocket>(interface.name);
  auto& probe = mProbes[interface.index];
  probe.port = socket->LocalPort();
  if (socket->IsConnected()) socket->Write(mGroup, "");
  probe.error = socket->LastErrorCode();
}

void Listener::Event_Error(int32_t code) {
  if (IsConnected() && mJoinError == 0) mJoinError = code;
}

Listener::SentProbe* Listener::FindProbe(const DatagramHead& datagram) {
  const auto probe = mProbes.find(datagram.interface);
  const bool found = probe != mProbes.end() && probe->second.port == datagram.from_port &&
                     IsOwnAddress(NetworkInterfaces(), datagram.from);
  return found ? &probe->second : nullptr;
}

void Listener::Heard(const DatagramHead& datagram) {
  if (auto* const probe = FindProbe(datagram)) {
    probe->came_back = true;
    return;
  }
  Sender& sender = mSenders[datagram.from];
  ++sender.datagrams;
  sender.interfaces.insert(datagram.interface);
}

void Listener::Event_ReceivedMessage(const Text& from, int32_t, const Text&) {
  ++mSenders[ParseIpv4(from).value_or(0)].messages;
}

InterfaceFacts Listener::Describe(const NetworkInterface& interface) const {
  InterfaceFacts facts;
  facts.interface = interface;
  facts.unfit = WhyUnfit(interface);
  const auto joins = Joins(ParseIpv4(mGroup).value_or(0));
  if (const auto join = joins.find(interface.index); join != joins.end()) facts.join = join->second;
  if (const auto probe = mProbes.find(interface.index); probe != mProbes.end()) {
    facts.probe_error = probe->second.error;
    if (facts.probe_error == 0) facts.probe = Probe::Lost;
    if (probe->second.came_back) facts.probe = Probe::CameBack;
  }
  return facts;
}

SenderFacts Listener::Describe(Ipv4Address address, const Sender& sender,
                               const Interfaces& interfaces) const {
  SenderFacts facts;
  facts.address = address;
  facts.own = IsOwnAddress(interfaces, address);
  facts.datagrams = sender.datagrams;
  facts.messages = sender.messages;
  for (const InterfaceIndex index : sender.interfaces) {
    const auto* const interface = FindInterface(interfaces, index);
    facts.interfaces.insert(interface == nullptr ? std::to_string(index) : interface->name);
  }
  return facts;
}

void Listener::Tell(Facts& facts) const {
  facts.group = mGroup.Bytes();
  facts.port = kPort;
  facts.open_error = mOpenError;
  facts.join_error = mJoinError;
  const auto interfaces =
      IsConnected() ? NetworkInterfaces() : Native().Links().Interfaces().value_or(Interfaces{});
  for (const auto& interface : interfaces) facts.interfaces.push_back(Describe(interface));
  for (const auto& [address, sender] : mSenders) {
    facts.senders.push_back(Describe(address, sender, interfaces));
  }
  for (const UnfinishedStream& stream : Unfinished()) {
    const auto address = ParseIpv4(stream.from);
    const auto sender = std::ranges::find(facts.senders, address, &SenderFacts::address);
    if (sender == facts.senders.end()) continue;
    sender->held = stream.held;
    sender->announced = stream.announced;
  }
  facts.buffer_asked = kReceiveBufferBytes;
  facts.buffer_granted = Granted(ReceiveBufferBytes());
  facts.drops = Drops();
}

}  // namespace quorvel::check
