#pragma once

#include <cstdint>
#include <map>
#include <vector>

#include "platform/network/sockets.h"
#include "platform/values/dictionary.h"
#include "platform/values/memory_block.h"

namespace quorvel {

/// Bytes that a sender's stream holds and that no look can deliver: a packet of which bytes are
/// missing, or a header with the length 0.
struct UnfinishedStream {
  Text from;              ///< the sender's dotted address
  int64_t held = 0;       ///< bytes
  int32_t announced = 0;  ///< the packet's length; 2147483647 when fewer than 4 bytes are held
};

/// Group messaging in a few calls: bind to a port, register a group name, send numbered commands
/// with data to a group or to one host, and get each message as an event.
///
/// Packets and their reassembly: `docs/wire-format.md`; group names: `docs/group-address.md`.
/// Until `Bind` has succeeded, `Register`, `Unregister` and the sends do nothing and report
/// nothing.
class EasyUDPSocket : public UDPSocket {
 public:
  /// Called once, before all other functions.
  virtual void Constructor();

  /// Raise `RuntimeException`: packets leave by the `SendMessage` functions and arrive as
  /// `Event_ReceivedMessage` alone.
  void Write(const Text& address, const Text& data) override;
  void Write(const Ref<Datagram>& datagram) override;
  [[nodiscard]] Ref<Datagram> Read(std::nullptr_t encoding) override;

  void Event_DataAvailable() override;
  void Event_Error() override;

  /// Joins the group with the name or dotted address `group`. A failure fires `Event_Error`.
  virtual void Register(const Text& group);
  /// Opens the socket on `port`. A failure fires `Event_Error`.
  virtual void Bind(int32_t port);
  /// Leaves the group. A failure fires `Event_Error`.
  virtual void Unregister(const Text& group);
  /// Sends one packet, as one datagram. A failure shows in `LastErrorCode` alone.
  virtual void SendMessageToGroup(const Text& group, int32_t command, const Text& data);
  /// Sends the packet to the host with the dotted address `address`.
  virtual void SendMessageToIndividual(const Text& address, int32_t command, const Text& data);
  /// Waits for a message with the command `command` and at least one byte of data, from any sender.
  /// Returns the data, and the sender's address in `from`. Events are delivered during the wait,
  /// and messages with other commands are dropped. Empty, with `from` unchanged, when the socket is
  /// not bound or fails. After a failure, messages are still dropped until a later wait succeeds.
  /// Command -1 cannot be awaited.
  virtual Text WaitForMessage(int32_t command, Text& from);

  /// The streams that wait for more bytes of their senders, in the order in which the senders were
  /// first heard. Looks at every sender that was ever heard.
  [[nodiscard]] std::vector<UnfinishedStream> Unfinished() const;

 protected:
  /// An operation has failed; `code` is the `LastErrorCode` of the operation.
  virtual void Event_Error(int32_t code);
  /// A message from the host with the dotted address `from`. The handler must not call `DoEvents`
  /// or `Poll`: the packet is still in the sender's buffer, and would be delivered again.
  virtual void Event_ReceivedMessage(const Text& from, int32_t command, const Text& data);

  /// The dotted address of the group with the name or dotted address `group`.
  [[nodiscard]] Text HashGroupNameToIP(const Text& group) const;

 private:
  [[nodiscard]] static MemoryBlock CreatePacket(int32_t command, const Text& data);
  void ProcessData();
  bool Sweep();
  bool TakeMessage(int32_t index);
  void NoteIdleLook(int32_t index);
  bool CheckForSingleMessage(const Text& from, const MemoryBlock& block, int32_t& consumed);
  [[nodiscard]] static bool IsClassDAddress(const Text& group);
  bool WaitingForThisMessage(int32_t command, const Text& data, const Text& from);

  static constexpr int32_t kNoWait = -1;

  int32_t mHashBins = 0;
  /// The undelivered bytes of each sender's address. An address stays once added.
  Dictionary mBuffers;
  /// The senders whose buffers may hold a complete packet, by their index in `mBuffers`, each with
  /// the number of looks in a row at a packet that takes nothing off the buffer. All others need no
  /// look until more of their bytes come.
  std::map<int32_t, int> mListed;
  /// Whether a sender left the list because of such a packet since the last exception about one.
  bool mIsStuck = false;
  int32_t mWaitForThisCommand = kNoWait;
  Text mCommandResponse;
  Text mMessageFrom;
};

}  // namespace quorvel
