// Makes packets, and takes packets off the stream of bytes of each sender; see docs/wire-format.md.

#include <algorithm>
#include <cstdint>
#include <limits>
#include <utility>

#include "messaging/easy_udp_socket.h"
#include "platform/runtime/runtime.h"
#include "platform/values/exceptions.h"

namespace quorvel {

namespace {
constexpr int32_t kLengthOffset = 0;
constexpr int32_t kCommandOffset = 4;
constexpr int32_t kHeaderSize = 8;
// After so many looks in a row at a packet of no length, no look can change anything.
constexpr int kMostIdleLooks = 2;

// The length field has 31 bits: a packet is cut below 2 GiB, far above the limit of a datagram.
int32_t PacketSize(const Text& data) {
  constexpr int64_t kMost = std::numeric_limits<int32_t>::max();
  return static_cast<int32_t>(std::min(int64_t{kHeaderSize} + LenB(data), kMost));
}

// A packet length below the header's size, or below 0, means an empty payload.
int32_t PayloadSize(int32_t packet_length) {
  return packet_length < kHeaderSize ? 0 : packet_length - kHeaderSize;
}

// A block that shares the buffer's bytes. Of a buffer above 2 GiB the block has the first 2 GiB,
// which is room for the longest packet.
MemoryBlock BlockOf(const Text& buffer) {
  MemoryBlock block(LenB(buffer));
  block.LittleEndian(false);
  block.StringValue(0, block.Size(), buffer);
  return block;
}
}  // namespace

MemoryBlock EasyUDPSocket::CreatePacket(int32_t command, const Text& data) {
  MemoryBlock packet(PacketSize(data));
  packet.LittleEndian(false);
  packet.Long(kLengthOffset, packet.Size());
  packet.Long(kCommandOffset, command);
  packet.StringValue(kHeaderSize, packet.Size() - kHeaderSize, data);
  return packet;
}

void EasyUDPSocket::Event_DataAvailable() {
  do {
    const auto datagram = UDPSocket::Read(Nil);
    const int32_t index = mBuffers.Append(datagram->Address(), datagram->Data());
    if (!datagram->Data().IsEmpty()) mListed[index] = 0;
    RuntimeBackgroundTask();
  } while (PacketsAvailable() != 0);
  ProcessData();
}

// Each sweep takes at most one packet of each sender, so that senders take turns. Sweeps go on
// until a sweep finds no packet.
void EasyUDPSocket::ProcessData() {
  while (Sweep()) continue;
  if (std::exchange(mIsStuck, false)) {
    throw StackOverflowException("A sender's data would have been handled without end.");
  }
}

// The walk looks up its next sender after each look, because a handler can turn the event loop and
// so change the list.
bool EasyUDPSocket::Sweep() {
  bool found = false;
  const int32_t count = mBuffers.Count();
  auto sender = mListed.begin();
  while (sender != mListed.end() && sender->first < count) {
    const int32_t index = sender->first;
    if (TakeMessage(index)) found = true;
    RuntimeBackgroundTask();
    sender = mListed.upper_bound(index);
  }
  return found;
}

inline bool EasyUDPSocket::WaitingForThisMessage(int32_t command, const Text& data,
                                                 const Text& from) {
  if (mWaitForThisCommand == kNoWait || mWaitForThisCommand != command) return false;
  mCommandResponse = data;
  mMessageFrom = from;
  return true;
}

inline bool EasyUDPSocket::CheckForSingleMessage(const Text& from, const MemoryBlock& block,
                                                 int32_t& consumed) {
  if (block.Size() == 0) return false;
  consumed = 0;
  const int32_t packet_length = block.Long(kLengthOffset);
  if (block.Size() < packet_length) return false;
  const int32_t command = block.Long(kCommandOffset);
  const Text data = block.StringValue(kHeaderSize, PayloadSize(packet_length));
  if (!WaitingForThisMessage(command, data, from)) {
    // A wait for a command drops the messages with other commands.
    if (mWaitForThisCommand == kNoWait) Event_ReceivedMessage(from, command, data);
  }
  consumed = packet_length;
  return true;
}

bool EasyUDPSocket::TakeMessage(int32_t index) {
  const Text from = mBuffers.Key(index);
  const Text buffer = mBuffers.Value(from);
  const MemoryBlock block = BlockOf(buffer);
  if (block.Long(kLengthOffset) == 0) NoteIdleLook(index);
  int32_t consumed = 0;
  if (!CheckForSingleMessage(from, block, consumed)) {
    mListed.erase(index);
    mBuffers.Value(from, buffer.Compact());
    return false;
  }
  mBuffers.Value(from, MidB(buffer, int64_t{consumed} + 1));
  // A look nested in the handler can have emptied the buffer and taken the sender off the list. The
  // rest of this look's copy then goes back into the buffer, and may hold complete packets.
  if (consumed != 0) mListed[index] = 0;
  return true;
}

// Counts before the handler runs, so that the sender leaves the list even if the handler raises.
void EasyUDPSocket::NoteIdleLook(int32_t index) {
  if (++mListed[index] < kMostIdleLooks) return;
  mListed.erase(index);
  mIsStuck = true;
}

std::vector<UnfinishedStream> EasyUDPSocket::Unfinished() const {
  std::vector<UnfinishedStream> unfinished;
  for (int32_t index = 0; index < mBuffers.Count(); ++index) {
    const Text from = mBuffers.Key(index);
    const Text buffer = mBuffers.Value(from);
    const auto held = static_cast<int64_t>(buffer.Bytes().size());
    const int32_t announced = BlockOf(buffer).Long(kLengthOffset);
    if (held != 0 && (announced == 0 || announced > held)) {
      unfinished.push_back({from, held, announced});
    }
  }
  return unfinished;
}

}  // namespace quorvel
