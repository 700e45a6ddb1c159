#pragma once

#include <utility>

#include "native/native.h"

namespace quorvel::qt {

class EventLoop final : public native::EventLoop {
 public:
  void Run() override;
  void Stop() override;
  void Turn(int32_t most_ms) override;
  [[nodiscard]] std::unique_ptr<native::Subscription> Watch(int descriptor,
                                                            native::Callback readable) override;
  [[nodiscard]] std::unique_ptr<native::Subscription> Repeat(std::chrono::milliseconds period,
                                                             native::Callback fired) override;
  [[nodiscard]] std::unique_ptr<native::Subscription> WatchQuit(native::Callback asked) override;

  /// True between the start of `Run` and `Stop`.
  [[nodiscard]] bool Running() const { return running; }
  /// Calls `callback` at the start of each `Run`.
  void WhenRun(native::Callback callback) { run_starts = std::move(callback); }

 private:
  native::Callback run_starts;
  bool running = false;
};

}  // namespace quorvel::qt
