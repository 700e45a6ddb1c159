// The event loop without a screen, in real time.

#include "native/headless/event_loop.h"

#include <gmock/gmock.h>
#include <unistd.h>

#include <array>
#include <string>

namespace quorvel::headless {
namespace {

using testing::ElementsAre;
using namespace std::chrono_literals;

TEST(EventLoop, RunsUntilACallbackStopsTheLoopAndEndedWatchesAreSilent) {
  EventLoop loop;
  std::vector<std::string> events;
  std::array<int, 2> ends{};
  ASSERT_TRUE(pipe(ends.data()) == 0 && write(ends[1], "x", 1) == 1);
  std::unique_ptr<native::Subscription> timer;
  std::array<std::unique_ptr<native::Subscription>, 2> watches;
  timer = loop.Repeat(1ms, [&] {
    events.emplace_back("timer");
    timer.reset();
    for (auto& watch : watches) {
      watch = loop.Watch(ends[0], [&] {
        events.emplace_back("watch");
        watches = {};
        loop.Post([&] { loop.Stop(); });
      });
    }
  });
  loop.Run();
  // A turn ends with its first event.
  timer = loop.Repeat(1ms, [&] { events.emplace_back("turn"); });
  loop.Turn(100000);
  EXPECT_THAT(events, ElementsAre("timer", "watch", "turn"));
  for (const int end : ends) close(end);
}

TEST(EventLoop, TimersFireInTheOrderOfTheirTimesAndOnceWhenLate) {
  EventLoop::Time now;
  EventLoop loop([&] { return now; });
  std::vector<std::string> events;
  const auto slow = loop.Repeat(7ms, [&] { events.emplace_back("7 ms"); });
  const auto fast = loop.Repeat(5ms, [&] { events.emplace_back("5 ms"); });
  for (const auto time : {4ms, 1ms, 100ms, 4ms, 1ms}) {
    now += time;
    loop.Turn(0);
  }
  EXPECT_THAT(events, ElementsAre("5 ms", "7 ms", "5 ms", "5 ms"));
}

}  // namespace
}  // namespace quorvel::headless
