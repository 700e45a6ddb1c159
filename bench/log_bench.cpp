// What a message costs, as the log and its payload grow.

#include <benchmark/benchmark.h>

#include <string>

#include "log/decode_word.h"
#include "platform/values/text.h"

namespace {

using quorvel::Text;

// The log's own way: the whole text is read, joined and assigned for each line.
void AppendLines(benchmark::State& state) {
  const auto lines = state.range(0);
  while (state.KeepRunning()) {
    Text log;
    for (int64_t i = 0; i < lines; ++i) {
      log = log + "IP Address: " + "10.77.0.1" + " Sent: " + "Marks: 9 of 10" + quorvel::EndOfLine;
    }
    benchmark::DoNotOptimize(log.Bytes().data());
  }
  state.SetItemsProcessed(state.iterations() * lines);
}
BENCHMARK(AppendLines)->RangeMultiplier(10)->Range(1000, 1000000)->Unit(benchmark::kMillisecond);

// A sender's stream: whole packets cut off its front while more arrives at its end.
void CutAtTheFront(benchmark::State& state) {
  const Text packet = Text::FromBytes(std::string(100, 'x'));
  Text stream;
  for (int64_t i = 0; i < state.range(0); ++i) stream = stream + packet;
  while (state.KeepRunning()) stream = quorvel::MidB(stream + packet, 101);
  state.SetItemsProcessed(state.iterations());
}
BENCHMARK(CutAtTheFront)->RangeMultiplier(100)->Range(1, 10000);

void WalkCharacters(benchmark::State& state, const std::string& character) {
  std::string bytes;
  for (int64_t i = 0; i < state.range(0); ++i) bytes += character;
  while (state.KeepRunning()) {
    const Text text = Text::FromBytes(bytes);
    int64_t sum = 0;
    for (int32_t i = 1; i <= quorvel::Len(text); ++i) sum += quorvel::Asc(quorvel::Mid(text, i, 1));
    benchmark::DoNotOptimize(sum);
  }
  state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK_CAPTURE(WalkCharacters, ascii, "x")->Range(1 << 10, 1 << 20);
BENCHMARK_CAPTURE(WalkCharacters, accented, "é")->Range(1 << 10, 1 << 20);

void Decode(benchmark::State& state) {
  const Text data = Text::FromBytes(std::string(65499, 'z'));
  while (state.KeepRunning()) benchmark::DoNotOptimize(quorvel::mGlobals::mDecodeWordReverse(data));
}
BENCHMARK(Decode)->Unit(benchmark::kMicrosecond);

}  // namespace

BENCHMARK_MAIN();
