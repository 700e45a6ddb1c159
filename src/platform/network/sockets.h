#pragma once

#include <array>
#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "native/event_loop.h"
#include "native/network_calls.h"
#include "platform/network/arrival.h"
#include "platform/network/group_links.h"
#include "platform/network/receiver.h"
#include "platform/network/sender_pins.h"
#include "platform/values/object.h"
#include "platform/values/text.h"

namespace quorvel {

/// Base of the sockets. A failure shows in `LastErrorCode` (the system's `errno`, 0 for success); a
/// failed receive also fires `Event_Error`. No failure raises an exception.
class SocketCore : public Object {
 public:
  /// The local port, and the port of every destination, 1 to 65535; set before `Connect`.
  [[nodiscard]] int32_t Port() const { return mPort; }
  void Port(int32_t port) { mPort = port; }
  [[nodiscard]] bool IsConnected() const { return mSocket >= 0; }
  [[nodiscard]] int32_t LastErrorCode() const { return mLastErrorCode; }

  /// Opens the socket, and closes an earlier socket first. `IsConnected` tells the success.
  virtual void Connect() = 0;
  /// Closes the socket, and leaves all groups. Does nothing when no socket is open.
  virtual void Close() = 0;
  /// Receives the datagrams that wait, with the events of each batch, before returning. Stops at a
  /// fair share when datagrams keep coming. Sets `LastErrorCode` anew: ENOTCONN on a closed socket,
  /// the number of a receive failure since the last `Poll`, else 0.
  virtual void Poll() = 0;

  /// At least one received datagram waits to be read.
  virtual void Event_DataAvailable() {}
  /// A receive has failed; `LastErrorCode` has the reason.
  virtual void Event_Error() {}

 protected:
  /// Sets `LastErrorCode` after an operation, from `errno` in case of failure. Returns `success`.
  bool Note(bool success);

  int mSocket = -1;
  int32_t mLastErrorCode = 0;

 private:
  int32_t mPort = 0;
};

/// A received datagram with the sender's address.
class Datagram : public Object {
 public:
  Datagram() = default;
  Datagram(const Text& address, Text data) { _Assign(address, std::move(data)); }
  /// The sender's IPv4 address in dotted decimal, without the port.
  [[nodiscard]] const Text& Address() const { return mAddress; }
  /// The received bytes, as a text without an encoding mark.
  [[nodiscard]] const Text& Data() const { return mData; }
  void _Assign(const Text& address, Text&& data) {
    mAddress = address;
    mData = std::move(data);
  }

 private:
  Text mAddress;
  Text mData;
};

/// The dotted addresses of the senders heard last, so that a sender's address is written once.
class AddressTexts {
 public:
  [[nodiscard]] const Text& Of(Ipv4Address address);

 private:
  struct Entry {
    Ipv4Address address = 0;
    Text text;
  };
  std::array<Entry, 256> mEntries;
};

/// What became of datagrams that a socket did not deliver, since `Connect`.
struct DropCounts {
  /// Copies of datagrams that came in by another interface.
  uint64_t doubles = 0;
  /// Datagrams to groups that the socket has not joined, and to broadcast addresses.
  uint64_t foreign = 0;
  /// Datagrams beyond the memory for datagrams that wait (256 MiB).
  uint64_t waiting = 0;
  /// Datagrams for which the system's receive buffer had no room.
  uint64_t by_system = 0;
};

/// An IPv4 socket for datagrams and multicast groups. Several sockets, also of several programs,
/// can share a port; each socket hears the groups that the socket itself joined.
///
/// Groups are joined on all network interfaces that can carry groups, and followed as interfaces
/// and links come and go; a thread takes datagrams from the system while the program is busy. See
/// docs/reliability.md.
class UDPSocket : public SocketCore {
 public:
  ~UDPSocket() override;

  /// Whether the socket only sends. A sending socket takes any free local port, and so does not
  /// draw datagrams away from a listener on this host. Set before `Connect`; off at first.
  void SendOnly(bool on) { mSendOnly = on; }
  /// The name of the interface by which datagrams to groups leave. Set before `Connect`; empty, the
  /// name at first, leaves the choice to the socket.
  void SendInterface(const std::string& name) { mSendInterface = name; }

  void Connect() override;
  void Close() override;
  void Poll() override;

  /// Joins the group with the dotted address `group`. False when the text is no group's address or
  /// no join succeeds; in the latter case the socket goes on trying until `LeaveMulticastGroup`.
  [[nodiscard]] virtual bool JoinMulticastGroup(const Text& group);
  /// Leaves the group on every interface on which the group was joined.
  virtual void LeaveMulticastGroup(const Text& group);
  /// Sends the bytes of `data` as one datagram to the dotted address of a group or host: to a group
  /// by one interface, to a host by the system's routes.
  virtual void Write(const Text& address, const Text& data);
  /// Sends the datagram's data to the datagram's address.
  virtual void Write(const Ref<Datagram>& datagram);
  /// Takes the oldest received datagram; Nil when all are read. `encoding` is always Nil.
  [[nodiscard]] virtual Ref<Datagram> Read(std::nullptr_t encoding);

  /// The number of received datagrams that are still to be read.
  [[nodiscard]] int32_t PacketsAvailable() const { return mUnread; }
  /// Whether datagrams to a group also reach listeners on this host. On at first.
  void SendToSelf(bool on);
  [[nodiscard]] bool SendToSelf() const { return mSendToSelf; }
  /// Time to live of datagrams to a group, 0 to 255. 1, the value at first, stays on the local
  /// network.
  void RouterHops(int32_t hops);
  [[nodiscard]] int32_t RouterHops() const { return mRouterHops; }

  /// The interfaces of this computer at the last look; empty before `Connect`.
  [[nodiscard]] Interfaces NetworkInterfaces() const;
  /// The result of the group's join on each interface tried: 0, or the system's `errno`.
  [[nodiscard]] std::map<InterfaceIndex, int> Joins(Ipv4Address group) const;
  [[nodiscard]] DropCounts Drops() const;
  /// The granted receive buffer as the system counts the buffer, in bytes; 0 when unknown.
  [[nodiscard]] size_t ReceiveBufferBytes() const;
  /// The receive buffer that `Connect` asks for, in bytes.
  static constexpr int kReceiveBufferBytes = 4 * 1024 * 1024;

 protected:
  /// Called for each datagram that counts, before the datagram can be read.
  virtual void Heard(const DatagramHead& datagram);

 private:
  enum class Delivery : uint8_t { Nothing, Batch };

  bool BindToPort();
  void ApplyMulticastOptions();
  void StartReceiving();
  void WatchLinks();
  void FollowLinks();
  void Tick();
  bool Send(Ipv4Address to, const Text& data);
  bool SendToGroup(Ipv4Address group, const Text& data);
  void DeliverWaiting();
  void TakeAndDeliver();
  Delivery DeliverBatch();
  void Fail(int error);
  void Judge(Arrival&& arrival, const SenderPins::Deliver& accept_copy);
  void Accept(Arrival&& arrival);
  SenderPins::Deliver AcceptingCopies();

  bool mSendOnly = false;
  bool mSendToSelf = true;
  int32_t mRouterHops = 1;
  std::string mSendInterface;
  std::unique_ptr<GroupLinks> mLinks;
  int mNotices = -1;
  std::unique_ptr<Receiver> mReceiver;
  std::vector<std::unique_ptr<native::Subscription>> mWatches;
  SenderPins mPins;
  DropCounts mDrops;
  /// The number of a receive failure since the last `Poll`, 0 without a failure.
  int32_t mReceiveError = 0;
  struct Unread {
    Ipv4Address from;
    Text data;
  };
  /// What has been received; empty when all is read. The last `mUnread` are to be read.
  std::vector<Unread> mReceived;
  int32_t mUnread = 0;
  Ref<Datagram> mRead;
  AddressTexts mAddresses;
};

}  // namespace quorvel
