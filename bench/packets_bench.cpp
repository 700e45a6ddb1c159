// What a message costs, as the number of senders grows that were ever heard.

#include <benchmark/benchmark.h>

#include <cstdint>
#include <string>

#include "platform/runtime/runtime.h"
#include "support/side.h"
#include "support/station.h"

namespace {

using quorvel::Ipv4Address;

// Hears packets with an empty text, one in each datagram.
class Listener {
 public:
  Listener() {
    quorvel::RuntimeInit(mSide);
    mSocket = quorvel::New<quorvel::Station>();
    mSocket->Bind(5563);
  }
  ~Listener() {
    mSocket = quorvel::Nil;
    static_cast<void>(quorvel::RuntimeExit());
  }
  void Hear(Ipv4Address from) {
    mSide.sockets.arriving.emplace_back(from, std::string("\0\0\0\x08\0\0\0\0", 8));
    mSocket->Poll();
    mSocket->messages.clear();
    mSocket->heard.clear();
  }
  void HearSenders(Ipv4Address count) {
    for (; mHeard < count; ++mHeard) Hear(mHeard);
  }

 private:
  quorvel::test::Side mSide;
  quorvel::Ref<quorvel::Station> mSocket;
  Ipv4Address mHeard = 0;
};

// Senders are never forgotten, so the counts have to rise.
void MessageAfterSenders(benchmark::State& state) {
  static Listener listener;
  const auto senders = static_cast<Ipv4Address>(state.range(0));
  listener.HearSenders(senders);
  while (state.KeepRunning()) listener.Hear(senders - 1);
  state.SetItemsProcessed(state.iterations());
}
BENCHMARK(MessageAfterSenders)->Arg(1)->Arg(1000)->Arg(1000000);

}  // namespace
