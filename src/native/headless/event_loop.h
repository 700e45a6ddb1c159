#pragma once

#include <chrono>
#include <deque>
#include <functional>
#include <list>
#include <memory>

#include "native/native.h"

namespace quorvel::headless {

/// An event loop over real descriptors and a clock that moves only when it is told to.
class EventLoop : public native::EventLoop {
 public:
  /// Runs the posted steps, and what arrives on descriptors; ends when it is stopped, or when no
  /// step is left and nothing arrives.
  void Run() override;
  void Stop() override { mStopped = true; }
  /// Waits on descriptors alone.
  void Turn(int32_t most_ms) override;
  std::unique_ptr<native::Subscription> Watch(int descriptor, native::Callback readable) override;
  std::unique_ptr<native::Subscription> Repeat(std::chrono::milliseconds period,
                                               native::Callback fired) override;

  /// A step for `Run` or `Turn` to take, in order.
  void Post(native::Callback step) { mSteps.push_back(std::move(step)); }
  /// Moves the clock, and fires the timers that become due, in the order of their times.
  void Advance(std::chrono::milliseconds time);
  /// Delivers posted steps and what arrives on descriptors until there is nothing more.
  void Settle();
  [[nodiscard]] bool Stopped() const { return mStopped; }

 private:
  struct Source {
    int descriptor = -1;
    std::chrono::milliseconds period{};
    std::chrono::milliseconds due{};
    native::Callback callback;
  };
  using Sources = std::list<std::shared_ptr<Source>>;
  class Holder;

  std::unique_ptr<native::Subscription> Add(Sources& sources, Source source);
  bool TakeStep();
  bool DeliverReadable(int32_t most_ms);

  Sources mWatches;
  Sources mTimers;
  std::deque<native::Callback> mSteps;
  std::chrono::milliseconds mNow{};
  bool mStopped = false;
};

}  // namespace quorvel::headless
