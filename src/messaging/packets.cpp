// Makes packets, and takes packets off the stream of bytes of each sender; see docs/wire-format.md.

#include <algorithm>
#include <cstdint>
#include <limits>

#include "messaging/easy_udp_socket.h"
#include "platform/runtime/runtime.h"

namespace quorvel {

namespace {
constexpr int32_t kLengthOffset = 0;
constexpr int32_t kCommandOffset = 4;
constexpr int32_t kHeaderSize = 8;

// The length field has 31 bits: a packet is cut below 2 GiB, far above the limit of a datagram.
int32_t PacketSize(const Text& data) {
  constexpr int64_t kMost = std::numeric_limits<int32_t>::max();
  return static_cast<int32_t>(std::min(int64_t{kHeaderSize} + LenB(data), kMost));
}

// A packet length below the header's size, or below 0, means an empty payload.
int32_t PayloadSize(int32_t packet_length) {
  return packet_length < kHeaderSize ? 0 : packet_length - kHeaderSize;
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
    const Text address = datagram->Address();
    mBuffers.Value(address, mBuffers.Lookup(address, "") + datagram->Data());
    RuntimeBackgroundTask();
  } while (PacketsAvailable() != 0);
  ProcessData();
}

// Each sweep takes at most one packet of each sender, so that senders take turns. Sweeps go on
// until a sweep finds no packet.
void EasyUDPSocket::ProcessData() {
  StackCheck stack;
  bool found = true;
  while (found) {
    found = false;
    auto sweep = StackCheck::Sweep::Unchanged;
    const int32_t count = mBuffers.Count();
    for (int32_t index = 0; index < count; ++index) {
      const Text from = mBuffers.Key(index);
      const Text buffer = mBuffers.Value(from);
      int32_t consumed = 0;
      if (CheckForSingleMessage(from, buffer, consumed)) {
        const Text rest = MidB(buffer, int64_t{consumed} + 1);
        mBuffers.Value(from, rest);
        found = true;
        if (LenB(rest) != LenB(buffer)) sweep = StackCheck::Sweep::Changed;
      }
      RuntimeBackgroundTask();
    }
    if (found) stack.Deeper(sweep);
  }
}

bool EasyUDPSocket::CheckForSingleMessage(const Text& from, const Text& buffer, int32_t& consumed) {
  if (LenB(buffer) == 0) return false;
  consumed = 0;
  MemoryBlock block(LenB(buffer));
  block.LittleEndian(false);
  block.StringValue(0, block.Size(), buffer);
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

std::vector<UnfinishedStream> EasyUDPSocket::Unfinished() const {
  std::vector<UnfinishedStream> unfinished;
  for (int32_t index = 0; index < mBuffers.Count(); ++index) {
    const Text from = mBuffers.Key(index);
    const Text buffer = mBuffers.Value(from);
    if (buffer.IsEmpty()) continue;
    MemoryBlock block(LenB(buffer));
    block.LittleEndian(false);
    block.StringValue(0, block.Size(), buffer);
    const int32_t announced = block.Long(kLengthOffset);
    if (announced == 0 || announced > block.Size()) {
      unfinished.push_back({from, block.Size(), announced});
    }
  }
  return unfinished;
}

bool EasyUDPSocket::WaitingForThisMessage(int32_t command, const Text& data, const Text& from) {
  if (mWaitForThisCommand == kNoWait || mWaitForThisCommand != command) return false;
  mCommandResponse = data;
  mMessageFrom = from;
  return true;
}

}  // namespace quorvel
