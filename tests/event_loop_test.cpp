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

class RealTime : public testing::Test {
 protected:
  RealTime() { EXPECT_TRUE(pipe(mPipe.data()) == 0 && write(mPipe[1], "x", 1) == 1); }
  ~RealTime() override { close(mPipe[0]), close(mPipe[1]); }

  EventLoop mLoop;
  /// A pipe that has something to read.
  std::array<int, 2> mPipe{};
  std::vector<std::string> mEvents;
};

TEST_F(RealTime, TheLoopRunsUntilACallbackStopsTheLoop) {
  std::unique_ptr<native::Subscription> timer, watch;
  timer = mLoop.Repeat(1ms, [&] {
    mEvents.emplace_back("timer");
    timer.reset();
    watch = mLoop.Watch(mPipe[0], [&] {
      mEvents.emplace_back("watch");
      watch.reset();
      mLoop.Post([&] { mLoop.Stop(); });
    });
  });
  mLoop.Run();
  // A turn ends with its first event.
  timer = mLoop.Repeat(1ms, [&] { mEvents.emplace_back("turn"); });
  mLoop.Turn(100000);
  EXPECT_THAT(mEvents, ElementsAre("timer", "watch", "turn"));
}

TEST_F(RealTime, AWatchThatAnotherCallbackEndsIsSilent) {
  std::array<std::unique_ptr<native::Subscription>, 2> watches;
  for (auto& watch : watches) {
    watch = mLoop.Watch(mPipe[0], [&] {
      mEvents.emplace_back("watch");
      watches = {};
    });
  }
  mLoop.Turn(0);
  EXPECT_EQ(mEvents.size(), 1U);
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
