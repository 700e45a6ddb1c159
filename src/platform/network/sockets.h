#pragma once

#include <cstdint>
#include <deque>
#include <map>
#include <memory>
#include <vector>

#include "native/event_loop.h"
#include "native/system_calls.h"
#include "platform/values/object.h"
#include "platform/values/text.h"

namespace quorvel {

/// Base of the sockets. Failures show in `LastErrorCode` (the system's `errno`, 0 for success) and
/// the Error event; nothing is raised.
class SocketCore : public Object {
 public:
  /// The local port, and the port that all datagrams are sent to; set before `Connect`.
  [[nodiscard]] int32_t Port() const { return mPort; }
  void Port(int32_t port) { mPort = port; }
  [[nodiscard]] bool IsConnected() const { return mSocket >= 0; }
  [[nodiscard]] int32_t LastErrorCode() const { return mLastErrorCode; }

  /// Opens the socket. On success `IsConnected` is true when this returns.
  virtual void Connect() = 0;
  virtual void Close() = 0;
  /// Delivers the pending events of this socket before it returns, until nothing is pending or
  /// a fair share has been delivered.
  virtual void Poll() = 0;

  virtual void Event_DataAvailable() {}
  virtual void Event_Error() {}

 protected:
  /// Notes how an operation went, and hands its success on.
  bool Note(bool success);

  int mSocket = -1;
  int32_t mLastErrorCode = 0;

 private:
  int32_t mPort = 0;
};

/// What came in one piece, and from where.
class Datagram : public Object {
 public:
  Datagram(Text address, Text data) : mAddress(std::move(address)), mData(std::move(data)) {}
  /// The sender's IPv4 address in dotted decimal, without the port.
  [[nodiscard]] const Text& Address() const { return mAddress; }
  /// The bytes as they came, with no mark.
  [[nodiscard]] const Text& Data() const { return mData; }

 private:
  Text mAddress;
  Text mData;
};

/// An IPv4 socket for datagrams and multicast groups. Several sockets, also of several programs,
/// share one port; each hears the groups that it joined itself.
class UDPSocket : public SocketCore {
 public:
  ~UDPSocket() override;

  /// Whether the socket is for sending alone: it then takes any free local port, and so does not
  /// draw datagrams away from a listener on this host. False unless set before `Connect`.
  void SendOnly(bool on) { mSendOnly = on; }

  void Connect() override;
  void Close() override;
  void Poll() override;

  /// Joins the group on the interface of the system's choice; when there is no route to it, on
  /// every usable interface. False when the text is no group's address or the join fails.
  [[nodiscard]] virtual bool JoinMulticastGroup(const Text& group);
  virtual void LeaveMulticastGroup(const Text& group);
  /// Sends the bytes as one datagram to a dotted address, group or host. When there is no route
  /// to a group, sends on the interfaces that a join would take.
  virtual void Write(const Text& address, const Text& data);
  virtual void Write(const Ref<Datagram>& datagram);
  /// The oldest datagram that was received, or Nil.
  [[nodiscard]] virtual Ref<Datagram> Read(std::nullptr_t encoding);

  /// How many datagrams of the batch under delivery are still to be read.
  [[nodiscard]] int32_t PacketsAvailable() const { return static_cast<int32_t>(mReceived.size()); }
  /// Whether what is sent to a group comes back to the sockets of this host.
  void SendToSelf(bool on);
  [[nodiscard]] bool SendToSelf() const { return mSendToSelf; }
  /// Time to live of what is sent to a group, 0 to 255.
  void RouterHops(int32_t hops);
  [[nodiscard]] int32_t RouterHops() const { return mRouterHops; }

 private:
  enum class Delivery : uint8_t { Nothing, Batch };

  bool BindToPort();
  void ApplyMulticastOptions();
  bool JoinAnywhere(Ipv4Address group);
  bool Send(Ipv4Address to, const Text& data);
  bool SendOnEachInterface(Ipv4Address group, const Text& data);
  bool ReceiveBatchOnce();
  Delivery DeliverBatch();

  bool mSendOnly = false;
  bool mSendToSelf = true;
  int32_t mRouterHops = 1;
  std::unique_ptr<native::Subscription> mWatch;
  std::unique_ptr<ReceiveBatch> mBatch;
  std::deque<Ref<Datagram>> mReceived;
  /// The interfaces on which each group was joined; 0 is the system's choice.
  std::map<Ipv4Address, std::vector<InterfaceIndex>> mJoined;
};

}  // namespace quorvel
