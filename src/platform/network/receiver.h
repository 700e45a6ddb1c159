#pragma once

#include <chrono>
#include <cstdint>
#include <deque>
#include <mutex>
#include <string>
#include <thread>
#include <variant>
#include <vector>

#include "native/network_calls.h"
#include "native/wake_flag.h"

namespace quorvel {

/// A datagram that has been taken from the system: the next `length` bytes of the batch.
struct ReceivedDatagram {
  DatagramHead head;
  SteadyTime at;
  size_t length;
};
/// A receive call has failed with the number `error`.
struct ReceiveFailure {
  int error;
};
/// From here on, the interface may have missed datagrams.
struct LostLink {
  InterfaceIndex interface;
};
using Received = std::variant<ReceivedDatagram, ReceiveFailure, LostLink>;

/// What came in one after the other, and the bytes of the datagrams without a gap.
struct ReceivedBatch {
  std::vector<Received> received;
  std::string bytes;
};

/// Takes a socket's datagrams from the system into memory, in the order of arrival, on a thread of
/// its own: while the program is busy, the small receive buffer of the system does not overflow.
/// The thread does nothing else. Without a thread (the system gives none, or the socket calls allow
/// none), datagrams come in by `TakeIn` alone.
///
/// All public functions are for the thread that made the receiver.
class Receiver {
 public:
  /// The most memory that waiting datagrams take up, in bytes; further datagrams are dropped.
  static constexpr size_t kMostWaiting = size_t{256} * 1024 * 1024;
  /// The most of what waits in one batch.
  static constexpr size_t kBatch = 512;

  /// `calls` and the open `socket` outlive the receiver.
  Receiver(SocketCalls& calls, int socket);
  /// Ends the thread within about two milliseconds, and drops what waits.
  ~Receiver();
  Receiver(const Receiver&) = delete;
  Receiver& operator=(const Receiver&) = delete;

  [[nodiscard]] bool HasThread() const { return mThread.joinable(); }
  /// Readable while something waits, some milliseconds later when much comes in a row; -1 when the
  /// system gave no descriptor.
  [[nodiscard]] int Descriptor() const { return mWaits.Descriptor(); }

  /// Takes in what the system holds, up to a fair share when datagrams keep coming.
  void TakeIn();
  /// Puts a note that `interface` may miss datagrams behind all that waits.
  void NoteLostLink(InterfaceIndex interface);
  [[nodiscard]] size_t Waiting() const;
  /// The oldest of what waits, up to kBatch. A failure comes alone.
  [[nodiscard]] ReceivedBatch Take();

  /// The datagrams dropped at kMostWaiting, and those dropped by the system, since the start.
  [[nodiscard]] uint64_t DroppedHere() const;
  [[nodiscard]] uint64_t DroppedBySystem();

 private:
  struct Share {
    size_t datagrams = 0;
    size_t bytes = 0;
    bool failed = false;
  };

  enum class Urgency : uint8_t { Now, MoreMayCome };

  void Run();
  void Tell(Urgency urgency);
  Share TakeBatch();
  Share TakeBatches(size_t least);
  ReceivedBatch& BatchWithRoomFor(size_t count);
  Share KeepDatagrams();
  void KeepNote(const Received& note);
  void KeepFailure(int error);
  [[nodiscard]] const ReceiveFailure* LastFailure() const;
  [[nodiscard]] std::chrono::microseconds NextRest(std::chrono::microseconds rest,
                                                   const Share& share) const;

  SocketCalls& mCalls;
  int mSocket;
  size_t mBufferBytes;
  WakeFlag mWaits;
  WakeFlag mStop;
  mutable std::mutex mLock;
  /// `mLock` guards the receive call and all below, so that arrivals keep their order.
  ReceiveBatch mBatch;
  std::deque<ReceivedBatch> mQueue;
  size_t mWaiting = 0;
  /// Whether the event loop has been told that something waits, and when.
  bool mTold = false;
  SteadyTime mLastTold;
  size_t mWaitingBytes = 0;
  uint64_t mDroppedHere = 0;
  uint64_t mDroppedBySystem = 0;
  uint32_t mLastSystemCount = 0;
  std::thread mThread;
};

}  // namespace quorvel
