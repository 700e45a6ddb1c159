// What a message costs on its way from the datagram to the line of the log.

#include <benchmark/benchmark.h>

#include <cstdint>
#include <string>

#include "app/app.h"
#include "app/entry.h"
#include "log/main_window.h"
#include "support/side.h"
#include "ui/globals.h"

namespace {

using namespace quorvel;

// The program on a side without a screen, with the log window open. The program's own windows
// outlive the benchmarks, and so does the side.
test::Side& StartedSide() {
  static auto* const side = [] {
    auto* const started = new test::Side;
    _Start(*started);
    App()->mSetGlobals();
    wMain()->Show();
    return started;
  }();
  return *side;
}

void MessagesToLog(benchmark::State& state) {
  auto& arriving = StartedSide().sockets.arriving;
  const auto senders = static_cast<Ipv4Address>(state.range(0));
  const std::string packet("\0\0\0\x20\0\0\0\0Nziph: 0 lu 89, tllw dlip", 32);
  constexpr Ipv4Address kAtOnce = 512;
  while (state.KeepRunningBatch(kAtOnce)) {
    for (Ipv4Address i = 0; i < kAtOnce; ++i) {
      arriving.emplace_back(0x0A000001 + i % senders, packet);
    }
    mGlobals::EasyUDPSocket1->Poll();
  }
  state.SetItemsProcessed(state.iterations());
  wMain()->efLog()->Text("");
}
BENCHMARK(MessagesToLog)->Arg(1)->Arg(50);

}  // namespace
