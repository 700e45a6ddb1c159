#include "platform/network/receiver.h"

#include <algorithm>
#include <cerrno>
#include <system_error>
#include <utility>

namespace quorvel {

namespace {

constexpr int kBatchesPerTakeIn = 64;
constexpr int kNoLimit = -1;
constexpr int kRestAfterFailureMs = 10;
// In the longest rest, 100,000 datagrams a second fill less than half of a usual receive buffer.
constexpr std::chrono::microseconds kShortestRest{125};
constexpr std::chrono::microseconds kLongestRest{2000};
constexpr std::chrono::milliseconds kBetweenWakeUps{8};
// What a small datagram takes up of the system's receive buffer, beside its bytes.
constexpr size_t kOverhead = 850;

bool IsNoFailure(int error) {
  return error == EAGAIN || error == EWOULDBLOCK || error == EINTR || error == ECONNREFUSED;
}

}  // namespace

Receiver::Receiver(SocketCalls& calls, int socket)
    : mCalls(calls), mSocket(socket), mBufferBytes(calls.ReceiveBufferBytes(socket)) {
  if (!calls.AllowsThread() || mWaits.Descriptor() < 0 || mStop.Descriptor() < 0) return;
  try {
    mThread = std::thread([this] { Run(); });
  } catch (const std::system_error&) {
    // The program has as many threads as the system allows.
  }
}

Receiver::~Receiver() {
  if (!HasThread()) return;
  mStop.Set();
  mThread.join();
}

// A look at the socket costs less than a wait that ends at once, so a wait follows an empty look.
void Receiver::Run() {
  auto rest = kShortestRest;
  while (true) {
    const Share share = TakeBatches(ReceiveBatch::kMostDatagrams);
    Tell(share.datagrams > 0 ? Urgency::MoreMayCome : Urgency::Now);
    if (share.datagrams > 0) {
      rest = NextRest(rest, share);
      std::this_thread::sleep_for(rest);
    }
    const bool empty = share.datagrams == 0 && !share.failed;
    const int most_ms = share.failed ? kRestAfterFailureMs : empty ? kNoLimit : 0;
    if (!mCalls.WaitToReceive(empty ? mSocket : -1, mStop.Descriptor(), most_ms)) return;
  }
}

// Wake-ups cost more than datagrams, so the thread lets datagrams gather. Rests grow while few
// datagrams come in a rest, and shrink when an eighth of the system's buffer fills.
std::chrono::microseconds Receiver::NextRest(std::chrono::microseconds rest,
                                             const Share& share) const {
  const size_t filled = share.datagrams * kOverhead + share.bytes;
  if (filled > mBufferBytes / 8) return std::max(rest / 2, kShortestRest);
  return filled < mBufferBytes / 16 ? std::min(rest * 2, kLongestRest) : rest;
}

// Goes on while a batch has at least `least` datagrams.
Receiver::Share Receiver::TakeBatches(size_t least) {
  Share all;
  for (int i = 0; i < kBatchesPerTakeIn; ++i) {
    const Share share = TakeBatch();
    all.datagrams += share.datagrams;
    all.bytes += share.bytes;
    all.failed = share.failed;
    if (share.datagrams < least) break;
  }
  return all;
}

void Receiver::TakeIn() {
  TakeBatches(1);
  Tell(Urgency::Now);
}

// The event loop, too, is woken for many datagrams at once while datagrams keep coming.
void Receiver::Tell(Urgency urgency) {
  const std::lock_guard lock(mLock);
  if (mTold || mQueue.empty()) return;
  const auto now = std::chrono::steady_clock::now();
  const bool has_time = urgency == Urgency::MoreMayCome && mWaiting < kBatch;
  if (has_time && now - mLastTold < kBetweenWakeUps) return;
  mWaits.Set();
  mTold = true;
  mLastTold = now;
}

Receiver::Share Receiver::TakeBatch() {
  const std::lock_guard lock(mLock);
  if (!mCalls.Receive(mSocket, mBatch)) {
    const int error = errno;
    if (IsNoFailure(error)) return {};
    KeepFailure(error);
    return {0, 0, true};
  }
  return KeepDatagrams();
}

Receiver::Share Receiver::KeepDatagrams() {
  Share share;
  const auto now = std::chrono::steady_clock::now();
  ReceivedBatch* batch = nullptr;
  for (const ReceivedBytes& datagram : mBatch.Received()) {
    const size_t length = datagram.bytes.size();
    ++share.datagrams;
    share.bytes += length;
    if (mWaitingBytes + sizeof(Received) + length > kMostWaiting) {
      ++mDroppedHere;
      continue;
    }
    if (batch == nullptr) batch = &BatchWithRoomFor(mBatch.Received().size());
    batch->received.emplace_back(ReceivedDatagram{datagram.head, now, length});
    batch->bytes += datagram.bytes;
    mWaitingBytes += sizeof(Received) + length;
    ++mWaiting;
  }
  return share;
}

// The newest batch, or a new batch behind a full batch and behind a failure, which comes alone.
ReceivedBatch& Receiver::BatchWithRoomFor(size_t count) {
  const bool full =
      mQueue.empty() || mQueue.back().received.size() + count > kBatch || LastFailure() != nullptr;
  if (full) mQueue.emplace_back().received.reserve(kBatch);
  return mQueue.back();
}

// A failure finds room in no batch that holds something.
void Receiver::KeepNote(const Received& note) {
  const bool alone = std::holds_alternative<ReceiveFailure>(note);
  BatchWithRoomFor(alone ? kBatch : 1).received.push_back(note);
  mWaitingBytes += sizeof(Received);
  ++mWaiting;
}

// A failure that goes on waits only once.
void Receiver::KeepFailure(int error) {
  if (const auto* const last = LastFailure(); last == nullptr || last->error != error) {
    KeepNote(ReceiveFailure{error});
  }
}

// The failure at the end of the queue, or null.
const ReceiveFailure* Receiver::LastFailure() const {
  return mQueue.empty() ? nullptr : std::get_if<ReceiveFailure>(&mQueue.back().received.back());
}

void Receiver::NoteLostLink(InterfaceIndex interface) {
  {
    const std::lock_guard lock(mLock);
    KeepNote(LostLink{interface});
  }
  Tell(Urgency::Now);
}

size_t Receiver::Waiting() const {
  const std::lock_guard lock(mLock);
  return mWaiting;
}

ReceivedBatch Receiver::Take() {
  const std::lock_guard lock(mLock);
  if (mQueue.empty()) return {};
  ReceivedBatch oldest = std::move(mQueue.front());
  mQueue.pop_front();
  mWaiting -= oldest.received.size();
  mWaitingBytes -= oldest.received.size() * sizeof(Received) + oldest.bytes.size();
  if (mQueue.empty() && std::exchange(mTold, false)) mWaits.Clear();
  return oldest;
}

uint64_t Receiver::DroppedHere() const {
  const std::lock_guard lock(mLock);
  return mDroppedHere;
}

uint64_t Receiver::DroppedBySystem() {
  const uint32_t count = mCalls.DroppedBySystem(mSocket);
  mDroppedBySystem += static_cast<uint32_t>(count - std::exchange(mLastSystemCount, count));
  return mDroppedBySystem;
}

}  // namespace quorvel
