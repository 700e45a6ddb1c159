// What a message costs on its way from the datagram to the line of the log.

#include <benchmark/benchmark.h>

#include "scripted_program.h"

namespace {

void MessagesToLog(benchmark::State& state) {
  auto& program = quorvel::bench::ScriptedProgram::Started();
  const auto senders = static_cast<quorvel::Ipv4Address>(state.range(0));
  constexpr int kAtOnce = 512;
  while (state.KeepRunningBatch(kAtOnce)) program.Hear(kAtOnce, senders);
  state.SetItemsProcessed(state.iterations());
  quorvel::wMain()->efLog()->Text("");
}
BENCHMARK(MessagesToLog)->Arg(1)->Arg(50);

}  // namespace
