#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace quorvel {

/// The file calls that the program makes of the operating system, one small function each.
/// Paths are in the system's own encoding. Failure is -1 or false, with the reason in `errno`.
class FileCalls {
 public:
  virtual ~FileCalls() = default;
  virtual bool Exists(const std::string& path) = 0;
  virtual int OpenToRead(const std::string& path) = 0;
  /// Creates the file, empty, or empties the one that is there.
  virtual int Create(const std::string& path) = 0;
  virtual bool MakeFolder(const std::string& path) = 0;
  /// The number of bytes read, 0 at the end.
  virtual int64_t Read(int file, std::span<char> into) = 0;
  /// The number of bytes written, at least 1.
  virtual int64_t Write(int file, std::string_view bytes) = 0;
  /// Returns when what was written is on disk.
  virtual bool Sync(int file) = 0;
  virtual void Close(int file) = 0;
  /// Fails with EEXIST, and changes nothing, when `to` exists.
  virtual bool RenameToNew(const std::string& from, const std::string& to) = 0;
  /// Gives the file its four-character type and creator where the system keeps such codes (macOS);
  /// does nothing, and succeeds, elsewhere.
  virtual bool SetFinderInfo(const std::string& path, std::string_view type,
                             std::string_view creator) = 0;
};

/// An IPv4 address, most significant octet first as people write it: 0xE0000001 is 224.0.0.1.
using Ipv4Address = uint32_t;
/// The system's number of a network interface; 0 leaves the choice to the system.
using InterfaceIndex = uint32_t;

struct ReceivedBytes {
  Ipv4Address from = 0;
  std::string_view bytes;
};

/// Room for the datagrams of one receive call; the views it hands out last until the next call.
class ReceiveBatch {
 public:
  static constexpr size_t kMostDatagrams = 32;
  static constexpr size_t kMostBytes = 65536;

  ReceiveBatch() : storage(kMostDatagrams * kMostBytes) {}

  std::span<char> Slot(size_t index) {
    return std::span(storage).subspan(index * kMostBytes, kMostBytes);
  }
  void Clear() { count = 0; }
  void Add(Ipv4Address from, size_t length) {
    received[count] = {from, {Slot(count).data(), length}};
    ++count;
  }
  [[nodiscard]] std::span<const ReceivedBytes> Received() const {
    return std::span(received).first(count);
  }

 private:
  std::vector<char> storage;
  std::array<ReceivedBytes, kMostDatagrams> received;
  size_t count = 0;
};

/// The socket calls that the program makes, one small function each. Failure is -1 or false, with
/// the reason in `errno`. Sockets are IPv4, for datagrams, and never block.
class SocketCalls {
 public:
  virtual ~SocketCalls() = default;
  /// A socket that hears no group but those it joined itself, where the system makes a difference,
  /// with a receive buffer of up to the given size, as far as the system grants it.
  virtual int Open(int receive_buffer_bytes) = 0;
  virtual void Close(int socket) = 0;
  /// Port 0 takes any free one.
  virtual bool Bind(int socket, uint16_t port) = 0;
  /// Lets other sockets that share bind the same port.
  virtual bool SharePort(int socket) = 0;
  virtual bool SetMulticastLoop(int socket, bool on) = 0;
  virtual bool SetMulticastHops(int socket, int hops) = 0;
  virtual bool SetMulticastInterface(int socket, InterfaceIndex interface) = 0;
  virtual bool Join(int socket, Ipv4Address group, InterfaceIndex interface) = 0;
  virtual bool Leave(int socket, Ipv4Address group, InterfaceIndex interface) = 0;
  virtual bool Send(int socket, Ipv4Address to, uint16_t port, std::string_view bytes) = 0;
  /// Fills the batch with what waits, up to its room. False with EAGAIN when nothing does.
  virtual bool Receive(int socket, ReceiveBatch& batch) = 0;
  /// The interfaces that are up and can multicast, loopback last and only if there is no other.
  virtual std::vector<InterfaceIndex> UsableInterfaces() = 0;
};

/// The calls of this system.
[[nodiscard]] FileCalls& PosixFileCalls();
[[nodiscard]] SocketCalls& PosixSocketCalls();

}  // namespace quorvel
