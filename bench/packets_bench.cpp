// The cost of the way from datagrams to messages: many senders, many packets, packets in pieces.

#include <benchmark/benchmark.h>

#include <cstddef>
#include <cstdint>
#include <string>

#include "messaging/easy_udp_socket.h"
#include "platform/runtime/runtime.h"
#include "support/side.h"

namespace {

using quorvel::Ipv4Address;
using quorvel::Text;

std::string Packet(const std::string& text) {
  const auto length = static_cast<uint32_t>(8 + text.size());
  std::string packet(8, '\0');
  for (size_t i = 0; i < 4; ++i) packet[i] = static_cast<char>(length >> (24 - 8 * i));
  return packet + text;
}

class CountingSocket : public quorvel::EasyUDPSocket {
 public:
  int64_t messages = 0;

 protected:
  using EasyUDPSocket::Event_Error;
  void Event_ReceivedMessage(const Text&, int32_t, const Text&) override { ++messages; }
};

class Listener {
 public:
  Listener() {
    quorvel::RuntimeInit(mSide);
    mSocket = quorvel::New<CountingSocket>();
    mSocket->Constructor();
    mSocket->Bind(5563);
  }
  ~Listener() {
    mSocket = quorvel::Nil;
    static_cast<void>(quorvel::RuntimeExit());
  }
  void Arrives(Ipv4Address from, const std::string& datagram) {
    mSide.sockets.arriving.emplace_back(from, datagram);
  }
  void Hear() { mSocket->Poll(); }
  void HearSenders(Ipv4Address count) {
    for (; mSenders < count; ++mSenders) {
      Arrives(mSenders, Packet(""));
      Hear();
    }
  }
  /// The messages since the start.
  [[nodiscard]] int64_t Messages() const { return mSocket->messages; }

 private:
  quorvel::test::Side mSide;
  quorvel::Ref<CountingSocket> mSocket;
  Ipv4Address mSenders = 0;
};

Listener& TheListener() {
  static Listener listener;
  return listener;
}

// Senders are never forgotten, so the counts have to rise, and no benchmark comes earlier.
void MessageAfterSenders(benchmark::State& state) {
  auto& listener = TheListener();
  const auto senders = static_cast<Ipv4Address>(state.range(0));
  listener.HearSenders(senders);
  const std::string packet = Packet("");
  while (state.KeepRunning()) {
    listener.Arrives(senders - 1, packet);
    listener.Hear();
  }
  state.SetItemsProcessed(state.iterations());
}
BENCHMARK(MessageAfterSenders)->Arg(1)->Arg(1000)->Arg(1000000);

// Datagrams of 8,000 packets each, of which the socket takes all into the sender's buffer before
// the first message: 8,000 and 104,000 packets in the buffer.
void PacketsInABuffer(benchmark::State& state) {
  auto& listener = TheListener();
  std::string datagram;
  for (int i = 0; i < 8000; ++i) datagram += Packet("");
  const int64_t before = listener.Messages();
  while (state.KeepRunning()) {
    for (int64_t i = 0; i < state.range(0); ++i) listener.Arrives(0, datagram);
    listener.Hear();
  }
  state.SetItemsProcessed(listener.Messages() - before);
}
BENCHMARK(PacketsInABuffer)->Arg(1)->Arg(13)->Unit(benchmark::kMillisecond);

// A packet of so many bytes in pieces of 1,400 bytes, with a look at the buffer after each piece.
void PacketInPieces(benchmark::State& state) {
  auto& listener = TheListener();
  const std::string packet = Packet(std::string(static_cast<size_t>(state.range(0)), 'z'));
  while (state.KeepRunning()) {
    for (size_t at = 0; at < packet.size(); at += 1400) {
      listener.Arrives(0, packet.substr(at, 1400));
      listener.Hear();
    }
  }
  state.SetBytesProcessed(state.iterations() * state.range(0));
}
BENCHMARK(PacketInPieces)->Arg(65499)->Arg(16 << 20)->Unit(benchmark::kMillisecond);

}  // namespace
