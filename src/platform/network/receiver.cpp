#include "platform/network/receiver.h"

#include <algorithm>
#include <cerrno>
#include <system_error>
#include <utility>

namespace quorvel {

namespace {

constexpr int kBatchesPerTakeIn = 64;
constexpr std::chrono::milliseconds kRestAfterFailure{10};
constexpr std::chrono::microseconds kLongestRest{1000};
// A small datagram takes up some 850 bytes of the system's receive buffer. At 100,000 datagrams a
// second, a rest of one microsecond for each 340 bytes of the buffer lets a quarter fill.
constexpr size_t kBufferBytesPerMicrosecond = 340;

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

void Receiver::Run() {
  while (mCalls.WaitToReceive(mSocket, mStop.Descriptor(), -1)) {
    const Share share = TakeBatch();
    if (share.failed) {
      mCalls.WaitToReceive(-1, mStop.Descriptor(), static_cast<int>(kRestAfterFailure.count()));
    } else {
      std::this_thread::sleep_for(Rest(share));
    }
  }
}

// Few datagrams in a batch say that few come: waiting for more saves wake-ups. The fuller the
// batch, the shorter the rest.
std::chrono::microseconds Receiver::Rest(const Share& share) const {
  const auto longest =
      std::min(kLongestRest, std::chrono::microseconds(mBufferBytes / kBufferBytesPerMicrosecond));
  const size_t quarter = std::max<size_t>(mBufferBytes / 4, 1);
  const double full = std::max(static_cast<double>(share.datagrams) / ReceiveBatch::kMostDatagrams,
                               static_cast<double>(share.bytes) / static_cast<double>(quarter));
  return std::chrono::microseconds(
      static_cast<int64_t>(static_cast<double>(longest.count()) * std::max(0.0, 1 - full)));
}

void Receiver::TakeIn() {
  for (int i = 0; i < kBatchesPerTakeIn; ++i) {
    if (TakeBatch().datagrams == 0) return;
  }
}

Receiver::Share Receiver::TakeBatch() {
  const std::lock_guard lock(mLock);
  if (!mCalls.Receive(mSocket, mBatch)) {
    const int error = errno;
    if (IsNoFailure(error)) return {};
    KeepFailure(error);
    return {0, 0, true};
  }
  Share share;
  const auto now = std::chrono::steady_clock::now();
  for (const ReceivedBytes& datagram : mBatch.Received()) {
    ++share.datagrams;
    share.bytes += datagram.bytes.size();
    KeepDatagram(datagram, now);
  }
  return share;
}

void Receiver::KeepDatagram(ReceivedBytes datagram, SteadyTime at) {
  const std::string_view bytes = std::exchange(datagram.bytes, {});
  if (mWaitingBytes + sizeof(Received) + bytes.size() > kMostWaiting) {
    ++mDroppedHere;
    return;
  }
  Keep(ReceivedDatagram{datagram, at, bytes.size()}, bytes);
}

bool Receiver::EndsInFailure() const {
  return !mQueue.empty() && std::holds_alternative<ReceiveFailure>(mQueue.back().received.back());
}

// A failure that goes on waits only once.
void Receiver::KeepFailure(int error) {
  if (EndsInFailure() && std::get<ReceiveFailure>(mQueue.back().received.back()).error == error) {
    return;
  }
  Keep(ReceiveFailure{error});
}

void Receiver::Keep(const Received& received, std::string_view bytes) {
  if (mQueue.empty()) mWaits.Set();
  const bool alone = std::holds_alternative<ReceiveFailure>(received) || EndsInFailure();
  if (mQueue.empty() || alone || mQueue.back().received.size() == kBatch) {
    mQueue.emplace_back().received.reserve(ReceiveBatch::kMostDatagrams);
  }
  mQueue.back().received.push_back(received);
  mQueue.back().bytes += bytes;
  mWaitingBytes += sizeof(Received) + bytes.size();
  ++mWaiting;
}

void Receiver::NoteLostLink(InterfaceIndex interface) {
  const std::lock_guard lock(mLock);
  Keep(LostLink{interface});
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
  if (mQueue.empty()) mWaits.Clear();
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
