#pragma once

#include <chrono>

#include "native/headless/event_loop.h"

namespace quorvel::test {

/// The event loop with a clock that moves only when a test moves the clock.
class ScriptedLoop : public headless::EventLoop {
 public:
  ScriptedLoop() : EventLoop([this] { return mNow; }) {}

  /// Ends also when no step is left and nothing arrives.
  void Run() override;
  void Stop() override;

  /// Moves the clock, and fires the timers that become due, in the order of their times.
  void Advance(std::chrono::milliseconds time);
  /// Delivers posted steps and what arrives on descriptors until nothing more comes.
  void Settle();
  /// Whether the loop was ever stopped.
  [[nodiscard]] bool Stopped() const { return mStopped; }

 private:
  Time mNow{};
  bool mStopped = false;
};

}  // namespace quorvel::test
