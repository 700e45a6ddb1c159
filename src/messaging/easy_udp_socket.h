#pragma once

#include <cstdint>

#include "platform/network/sockets.h"
#include "platform/values/dictionary.h"
#include "platform/values/memory_block.h"

namespace quorvel {

/// Group messaging in a few calls: bind to a port, register a group name, send numbered commands
/// with data to a group or to one host, and get each message as an event.
///
/// Packets and their reassembly: `docs/wire-format.md`; group names: `docs/group-address.md`.
/// `Register`, `Unregister` and the sends do nothing in silence until `Bind` has succeeded.
class EasyUDPSocket : public UDPSocket {
 public:
  virtual void Constructor();

  /// Refused: the class's own traffic is all there is. Raise `RuntimeException`.
  void Write(const Text& address, const Text& data) override;
  void Write(const Ref<Datagram>& datagram) override;
  [[nodiscard]] Ref<Datagram> Read(std::nullptr_t encoding) override;

  void Event_DataAvailable() override;
  void Event_Error() override;

  /// Joins the group of that name or dotted address. A failed join raises Error.
  virtual void Register(const Text& group);
  /// Opens the socket on `port`. A failure raises Error.
  virtual void Bind(int32_t port);
  /// Leaves the group. A failure raises Error.
  virtual void Unregister(const Text& group);
  /// Sends one packet, as one datagram. A failure shows in `LastErrorCode` alone.
  virtual void SendMessageToGroup(const Text& group, int32_t command, const Text& data);
  /// The same to a host, by its dotted address.
  virtual void SendMessageToIndividual(const Text& address, int32_t command, const Text& data);
  /// Waits until a message with that command and some data has come, whoever sent it; returns the
  /// data, and the sender's address in `from`. Events go on meanwhile; messages with other commands
  /// are dropped. Empty, with `from` as it was, when the socket is not bound or fails. After a
  /// failure the wait stays on, and messages stay diverted, until a later wait succeeds.
  virtual Text WaitForMessage(int32_t command, Text& from);

 protected:
  /// `code` is the `LastErrorCode` of that moment.
  virtual void Event_Error(int32_t code);
  /// A message from the host with that address. The handler keeps away from `DoEvents` and
  /// `Poll`: the packet is still in its buffer.
  virtual void Event_ReceivedMessage(const Text& from, int32_t command, const Text& data);

 private:
  /// Where group addresses and packets can be had without a network.
  friend struct EasyUDPSocketDoor;

  [[nodiscard]] Text HashGroupNameToIP(const Text& group) const;
  [[nodiscard]] static MemoryBlock CreatePacket(int32_t command, const Text& data);
  void ProcessData();
  bool CheckForSingleMessage(const Text& from, const Text& buffer, int32_t& consumed);
  [[nodiscard]] static bool IsClassDAddress(const Text& group);
  bool WaitingForThisMessage(int32_t command, const Text& data, const Text& from);

  static constexpr int32_t kNoWait = -1;

  int32_t mHashBins = 0;
  /// What each sender's address has sent and is not yet cut off. Never shrinks.
  Dictionary mBuffers;
  int32_t mWaitForThisCommand = kNoWait;
  Text mCommandResponse;
  Text mMessageFrom;
};

}  // namespace quorvel
