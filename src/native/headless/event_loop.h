#pragma once

#include <chrono>
#include <deque>
#include <functional>
#include <list>
#include <memory>
#include <optional>
#include <utility>

#include "native/event_loop.h"

namespace quorvel::headless {

/// The event loop of a program without windows: waits on descriptors and timers in one `poll`.
///
/// All calls and callbacks happen on the same thread. A subscription ends before the loop ends.
class EventLoop : public native::EventLoop {
 public:
  using Time = std::chrono::steady_clock::time_point;
  using Clock = std::function<Time()>;

  explicit EventLoop(Clock clock = std::chrono::steady_clock::now) : mClock(std::move(clock)) {}

  void Run() override;
  void Stop() override { mStopped = true; }
  void Turn(int32_t most_ms) override;
  std::unique_ptr<native::Subscription> Watch(int descriptor, native::Callback readable) override;
  /// `period` is at least 1 ms. A timer that is late by several periods fires only once.
  std::unique_ptr<native::Subscription> Repeat(std::chrono::milliseconds period,
                                               native::Callback fired) override;
  /// Without a desktop, signals are the only requests to quit.
  std::unique_ptr<native::Subscription> WatchQuit(native::Callback asked) override;
  /// Adds a step for `Run` or `Turn` to call later; steps are called in order, one in each turn.
  void Post(native::Callback step) { mSteps.push_back(std::move(step)); }

 protected:
  /// Waits up to `most_ms`, without limit when negative, and delivers one round of events. False
  /// when no event came.
  bool Deliver(int32_t most_ms);
  /// Fires each due timer once, in the order of the due times; false when no timer is due.
  bool FireDue();
  /// When the next timer is due; nothing without timers.
  [[nodiscard]] std::optional<Time> NextDue() const;
  /// Whether `Stop` was called since the last `TakeStop`.
  [[nodiscard]] bool TakeStop() { return std::exchange(mStopped, false); }

 private:
  struct Source {
    int descriptor = -1;
    std::chrono::milliseconds period{};
    Time due{};
    native::Callback callback;
  };
  using Sources = std::list<std::shared_ptr<Source>>;
  class Holder;
  class QuitHolder;

  static std::unique_ptr<native::Subscription> Add(Sources& sources, Source source);
  [[nodiscard]] std::shared_ptr<Source> NextTimer() const;
  bool TakeStep();
  bool DeliverReadable(int32_t most_ms);
  [[nodiscard]] int32_t TimeToWait(int32_t most_ms) const;

  Clock mClock;
  Sources mWatches;
  Sources mTimers;
  std::deque<native::Callback> mSteps;
  bool mStopped = false;
};

}  // namespace quorvel::headless
