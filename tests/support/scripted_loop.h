#pragma once

#include <chrono>

#include "native/headless/event_loop.h"

namespace quorvel::test {

/// The event loop with a clock that moves only when a test moves the clock.
class ScriptedLoop : public headless::EventLoop {
 public:
  ScriptedLoop() : EventLoop([this] { return mNow; }) {}

  /// Ends also when no step is left and nothing arrives.
  void Run() override {
    static_cast<void>(TakeStop());
    while (!TakeStop() && Deliver(0)) continue;
  }
  void Stop() override {
    mStopped = true;
    EventLoop::Stop();
  }

  /// Moves the clock, and fires the timers that become due, in the order of their times.
  void Advance(std::chrono::milliseconds time) {
    const Time until = mNow + time;
    for (auto due = NextDue(); due && *due <= until; due = NextDue()) {
      mNow = *due;
      FireDue();
    }
    mNow = until;
  }
  /// Delivers posted steps and events of descriptors until nothing more comes.
  void Settle() {
    while (Deliver(0)) continue;
  }
  /// Whether the loop was ever stopped.
  [[nodiscard]] bool Stopped() const { return mStopped; }

 private:
  Time mNow{};
  bool mStopped = false;
};

}  // namespace quorvel::test
