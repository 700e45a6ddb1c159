// What a message costs, as the number of senders grows that were ever heard.

#include <benchmark/benchmark.h>

#include <cstdint>
#include <string>

#include "platform/runtime/runtime.h"
#include "support/side.h"
#include "support/station.h"

namespace {

using quorvel::Ref;
using quorvel::Station;

constexpr quorvel::Ipv4Address kFirst = 0x0A000001;

// One datagram with one packet of an empty text, from the last of `senders` senders.
void MessageAfterSenders(benchmark::State& state) {
  quorvel::test::Side side;
  quorvel::RuntimeInit(side);
  {
    const Ref<Station> socket = quorvel::New<Station>();
    socket->Bind(5563);
    const auto senders = static_cast<quorvel::Ipv4Address>(state.range(0));
    const std::string packet("\0\0\0\x08\0\0\0\0", 8);
    const auto deliver = [&](quorvel::Ipv4Address from) {
      side.sockets.arriving.emplace_back(from, packet);
      socket->Poll();
      socket->messages.clear();
      socket->heard.clear();
    };
    for (quorvel::Ipv4Address i = 0; i < senders; ++i) deliver(kFirst + i);
    while (state.KeepRunning()) deliver(kFirst + senders - 1);
    state.SetItemsProcessed(state.iterations());
  }
  static_cast<void>(quorvel::RuntimeExit());
}
BENCHMARK(MessageAfterSenders)->Arg(1)->Arg(1000)->Arg(1000000);

}  // namespace
