// The event loop without a screen, in real time.

#include "native/headless/event_loop.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <array>
#include <string>

namespace quorvel::headless {
namespace {

using testing::ElementsAre;
using namespace std::chrono_literals;

/// A pipe that has something to read.
struct ReadyPipe {
  ReadyPipe() { EXPECT_TRUE(pipe(ends.data()) == 0 && write(ends[1], "x", 1) == 1); }
  ~ReadyPipe() { close(ends[0]), close(ends[1]); }

  std::array<int, 2> ends{};
};

TEST(EventLoop, RunsUntilACallbackStopsTheLoop) {
  EventLoop loop;
  std::vector<std::string> events;
  std::unique_ptr<native::Subscription> timer, watch;
  ReadyPipe pipe;
  timer = loop.Repeat(1ms, [&] {
    events.emplace_back("timer");
    timer.reset();
    watch = loop.Watch(pipe.ends[0], [&] {
      events.emplace_back("watch");
      watch.reset();
      loop.Post([&] { loop.Stop(); });
    });
  });
  loop.Post([&] { events.emplace_back("step"); });
  const auto start = std::chrono::steady_clock::now();
  loop.Run();
  EXPECT_GE(std::chrono::steady_clock::now() - start, 1ms);
  EXPECT_THAT(events, ElementsAre("step", "timer", "watch"));
  // A stop before a run does not end the run.
  loop.Stop();
  loop.Post([&] { loop.Post([&] { loop.Stop(); }); });
  loop.Post([&] { events.emplace_back("second run"); });
  loop.Run();
  // Neither subscription is left.
  loop.Turn(5);
  EXPECT_EQ(events.size(), 4U);
}

TEST(EventLoop, ATurnEndsWithTheFirstEvent) {
  EventLoop loop;
  int fired = 0;
  const auto timer = loop.Repeat(1ms, [&] { ++fired; });
  const auto start = std::chrono::steady_clock::now();
  while (fired < 3) loop.Turn(20000);
  EXPECT_LT(std::chrono::steady_clock::now() - start, 20s);
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

TEST(EventLoop, AWatchThatAnotherCallbackEndsIsSilent) {
  EventLoop loop;
  ReadyPipe pipe;
  std::vector<std::unique_ptr<native::Subscription>> watches;
  int called = 0;
  for (int i = 0; i < 2; ++i) {
    watches.push_back(loop.Watch(pipe.ends[0], [&] {
      ++called;
      watches.clear();
    }));
  }
  loop.Turn(0);
  EXPECT_EQ(called, 1);
}

}  // namespace
}  // namespace quorvel::headless
