// What one frame of the log's view costs, as the text grows.

#include <benchmark/benchmark.h>

#include <QApplication>
#include <QScrollBar>
#include <QTest>
#include <algorithm>
#include <chrono>
#include <string>
#include <utility>
#include <vector>

#include "native/qt/view/text_view.h"

namespace {

using quorvel::qt::TextView;

constexpr const char* kLine = "IP Address: 10.77.0.1 Sent: Marks: 9 of 10\n";

const std::string& TextOf(int64_t lines) {
  static std::string text;
  while (text.size() < static_cast<size_t>(lines) * std::char_traits<char>::length(kLine)) {
    text += kLine;
  }
  text.resize(static_cast<size_t>(lines) * std::char_traits<char>::length(kLine));
  return text;
}

// A view in the size of a large window, that shows so many lines.
class View {
 public:
  explicit View(std::string_view text) {
    view.resize(1280, 960);
    view.show();
    static_cast<void>(QTest::qWaitForWindowExposed(&view));
    view.ShowText(text, 0);
    view.ShowNow();
  }
  void Key(Qt::Key key, Qt::KeyboardModifiers with = Qt::NoModifier) {
    QTest::keyClick(&view, key, with);
    view.ShowNow();
  }

  TextView view{nullptr, [] { return nullptr; }};
};

template <class Act>
void Frames(benchmark::State& state, Act act) {
  View view(TextOf(state.range(0)));
  std::vector<double> milliseconds;
  while (state.KeepRunning()) {
    const auto start = std::chrono::steady_clock::now();
    act(view, static_cast<int64_t>(milliseconds.size()));
    const std::chrono::duration<double, std::milli> passed =
        std::chrono::steady_clock::now() - start;
    milliseconds.push_back(passed.count());
  }
  std::ranges::sort(milliseconds);
  state.counters["median"] = milliseconds[milliseconds.size() / 2];
  state.counters["of100"] = milliseconds[milliseconds.size() * 99 / 100];
}

void Drag(View& shown, int64_t frame) {
  QScrollBar& bar = *shown.view.verticalScrollBar();
  bar.setSliderPosition(static_cast<int>(frame * 7919 % 100 * (bar.maximum() / 100)));
  bar.triggerAction(QAbstractSlider::SliderMove);
  shown.view.ShowNow();
}
void Page(View& shown, int64_t frame) {
  shown.Key(frame % 50 < 25 ? Qt::Key_PageUp : Qt::Key_PageDown);
}
void Resize(View& shown, int64_t frame) {
  shown.view.resize(1280 - static_cast<int>(frame % 100) * 8, 960);
  shown.view.ShowNow();
}
void FontStep(View& shown, int64_t frame) {
  QFont font = shown.view.font();
  font.setPixelSize(12 + static_cast<int>(frame % 8) * 2);
  shown.view.setFont(font);
  shown.view.ShowNow();
}

void Register() {
  const std::pair<const char*, void (*)(View&, int64_t)> acts[] = {
      {"ViewDrag", Drag}, {"ViewPage", Page}, {"ViewResize", Resize}, {"ViewFontStep", FontStep}};
  for (const auto& [name, act] : acts) {
    benchmark::RegisterBenchmark(name, [act = act](benchmark::State& state) { Frames(state, act); })
        ->RangeMultiplier(10)
        ->Range(10000, 1000000)
        ->Unit(benchmark::kMicrosecond);
  }
}
// A view that follows its end, with so many new lines in each frame.
void ViewFollow(benchmark::State& state) {
  const std::string& text = TextOf(1000000);
  const size_t step = static_cast<size_t>(state.range(0)) * std::char_traits<char>::length(kLine);
  size_t size = step;
  View shown({});
  shown.view.FollowEnd(true);
  while (state.KeepRunning()) {
    const size_t kept = size;
    size = size + step > text.size() ? step : size + step;
    shown.view.ShowText(std::string_view(text).substr(0, size), size > kept ? kept : 0);
    shown.view.ShowNow();
  }
}
BENCHMARK(ViewFollow)->Arg(1)->Arg(333)->Unit(benchmark::kMicrosecond);

// A text that is not there, in so many lines.
void Find(benchmark::State& state) {
  const std::string& text = TextOf(state.range(0));
  while (state.KeepRunning()) {
    const auto result = quorvel::qt::FindIn(text, {}, "Marks: 9 of 11", state.range(1) != 0,
                                            quorvel::qt::FindStep::Next);
    benchmark::DoNotOptimize(result);
  }
  state.SetBytesProcessed(state.iterations() * static_cast<int64_t>(text.size()));
}
BENCHMARK(Find)->ArgsProduct({{2400000}, {0, 1}})->Unit(benchmark::kMillisecond);

// One line of so many MiB.
void OneLine(benchmark::State& state) {
  const std::string text(static_cast<size_t>(state.range(0)) << 20, 'w');
  View shown(text);
  int64_t frame = 0;
  while (state.KeepRunning()) Drag(shown, ++frame);
}
BENCHMARK(OneLine)->Arg(1)->Arg(100)->Unit(benchmark::kMicrosecond);

}  // namespace

int main(int count, char** arguments) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  const QApplication toolkit(count, arguments);
  benchmark::Initialize(&count, arguments);
  Register();
  benchmark::RunSpecifiedBenchmarks();
}
