#pragma once

#include <array>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace quorvel {

/// An IPv4 address with the first octet in the highest byte: 0xE0000001 is 224.0.0.1.
using Ipv4Address = uint32_t;
/// The system's number of a network interface, from 1 up; 0 stands for an unknown interface.
using InterfaceIndex = uint32_t;
/// A point in time on a clock that never jumps.
using SteadyTime = std::chrono::steady_clock::time_point;

/// All that the system tells of a received datagram beside the bytes.
struct DatagramHead {
  Ipv4Address from = 0;
  uint16_t from_port = 0;
  /// The destination in the datagram's header; 0 where the system does not tell the destination.
  Ipv4Address to = 0;
  /// Whether `to` is a broadcast address.
  bool broadcast = false;
  /// The interface by which the datagram came in.
  InterfaceIndex interface = 0;
  /// When the datagram came in, on a clock of the system; of use for differences of less than a
  /// second. 0 where the system does not tell.
  std::chrono::nanoseconds stamp{};
};

/// A received datagram. `bytes` is a view into the `ReceiveBatch`.
struct ReceivedBytes {
  DatagramHead head;
  std::string_view bytes;
};

/// Room for the datagrams of one receive call. The views in `Received` last until the next call.
class ReceiveBatch {
 public:
  static constexpr size_t kMostDatagrams = 32;
  static constexpr size_t kMostBytes = 65536;

  /// The room for the datagram `index`, 0 to 31.
  std::span<char> Slot(size_t index) { return {storage.get() + index * kMostBytes, kMostBytes}; }
  void Clear() { count = 0; }
  /// Counts the next slot as received, with `length` bytes.
  void Add(const DatagramHead& head, size_t length) {
    received[count] = {head, {Slot(count).data(), length}};
    ++count;
  }
  [[nodiscard]] std::span<const ReceivedBytes> Received() const {
    return std::span(received).first(count);
  }

 private:
  // Not set to zero: room that no datagram has used takes no memory.
  std::unique_ptr<char[]> storage{new char[kMostDatagrams * kMostBytes]};
  std::array<ReceivedBytes, kMostDatagrams> received;
  size_t count = 0;
};

/// The socket calls that the program makes, one small function each, on IPv4 datagram sockets. A
/// socket is given by the descriptor. A failed call returns -1 or false, with the reason in
/// `errno`. No call but `Send` and `WaitToReceive` waits.
class SocketCalls {
 public:
  virtual ~SocketCalls() = default;
  /// Opens a socket; the caller closes the socket. The socket hears only the groups that the socket
  /// itself joins, where the system has a choice, and gets a receive buffer of the given size or
  /// the part that the system grants.
  virtual int Open(int receive_buffer_bytes) = 0;
  virtual void Close(int socket) = 0;
  /// Binds the port on all local addresses; port 0 takes any free port.
  virtual bool Bind(int socket, uint16_t port) = 0;
  /// Lets the socket share the port with sockets that share by SO_REUSEADDR.
  virtual bool ShareAddress(int socket) = 0;
  /// Lets the socket share the port with sockets that share by SO_REUSEPORT.
  virtual bool SharePort(int socket) = 0;
  /// Whether datagrams to a group also reach listeners on this host.
  virtual bool SetMulticastLoop(int socket, bool on) = 0;
  /// Time to live of datagrams to a group; values outside of 0 to 255 are clamped.
  virtual bool SetMulticastHops(int socket, int hops) = 0;
  /// The interface for datagrams to groups, and their source address; with 0 the system chooses a
  /// source address of the interface.
  virtual bool SetMulticastInterface(int socket, InterfaceIndex interface, Ipv4Address source) = 0;
  /// Joins and leaves the group on one interface.
  virtual bool Join(int socket, Ipv4Address group, InterfaceIndex interface) = 0;
  virtual bool Leave(int socket, Ipv4Address group, InterfaceIndex interface) = 0;
  /// Sends one datagram. Waits for room in the send buffer, and fails after a second without room.
  virtual bool Send(int socket, Ipv4Address to, uint16_t port, std::string_view bytes) = 0;
  /// Fills the batch with the datagrams that wait, 32 at the most. False with EAGAIN when no
  /// datagram waits. Any thread may call, one thread at a time.
  virtual bool Receive(int socket, ReceiveBatch& batch) = 0;
  /// Waits until the socket has a datagram or an error, `most_ms` have passed (negative: no limit),
  /// or the descriptor `stop` is readable; false in the last case alone. A socket of -1 is not
  /// waited for. Any thread may call.
  virtual bool WaitToReceive(int socket, int stop, int most_ms) = 0;
  /// Whether a thread of its own may call `Receive` and `WaitToReceive`.
  [[nodiscard]] virtual bool AllowsThread() const { return true; }
  /// The size of the receive buffer as the system counts the size, in bytes; 0 when unknown.
  virtual size_t ReceiveBufferBytes(int socket) = 0;
  /// The datagrams that the system dropped for want of room in the receive buffer since `Open`,
  /// modulo 2^32; 0 where the system does not count.
  virtual uint32_t DroppedBySystem(int socket) = 0;
};

/// A network interface of this computer.
struct NetworkInterface {
  InterfaceIndex index = 0;
  std::string name;
  /// Switched on by the administrator.
  bool up = false;
  /// The link carries: the cable is in, the radio network is joined.
  bool running = false;
  bool multicast = false;
  bool loopback = false;
  /// A tunnel or a dial-up line: no network of several computers lies behind the interface.
  bool point_to_point = false;
  /// How often the link has come or gone, so that a short loss shows afterwards; 0 where the system
  /// does not count.
  uint32_t link_changes = 0;
  std::vector<Ipv4Address> addresses;
};

/// What notices of the system told since they were read last.
struct LinkNotices {
  /// False when notices were lost or unreadable: any interface may have been deleted and
  /// re-created.
  bool complete = true;
  /// The interfaces that were deleted, or lost an address; both may be back.
  std::vector<InterfaceIndex> renewed;
};

/// What the program asks the system about network interfaces, one small function each.
class LinkCalls {
 public:
  virtual ~LinkCalls() = default;
  /// All interfaces by rising index; nothing when the system refuses to tell.
  virtual std::optional<std::vector<NetworkInterface>> Interfaces() = 0;
  /// The interfaces of the default routes, the best route first; empty when there is none.
  virtual std::vector<InterfaceIndex> DefaultRoutes() = 0;
  /// Opens a descriptor that is readable after an interface or an address came, changed or went.
  /// -1 where the system has no such notices. The caller closes the descriptor by `CloseNotices`.
  virtual int OpenNotices() = 0;
  virtual void CloseNotices(int descriptor) = 0;
  /// Takes all notices that wait, without waiting for any.
  virtual LinkNotices ReadNotices(int descriptor) = 0;
};

/// The calls of this system.
[[nodiscard]] SocketCalls& PosixSocketCalls();
[[nodiscard]] LinkCalls& PosixLinkCalls();

}  // namespace quorvel
