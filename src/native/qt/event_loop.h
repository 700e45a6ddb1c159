#pragma once

#include <utility>

#include "native/native.h"
#include "native/qt/application.h"

namespace quorvel::qt {

class EventLoop final : public native::EventLoop {
 public:
  explicit EventLoop(Application& the_application) : application(the_application) {}

  /// A `Stop` that comes before `Run` makes that `Run` return at once.
  void Run() override;
  void Stop() override;
  void Turn(int32_t most_ms) override;
  [[nodiscard]] std::unique_ptr<native::Subscription> Watch(int descriptor,
                                                            native::Callback readable) override;
  [[nodiscard]] std::unique_ptr<native::Subscription> Repeat(std::chrono::milliseconds period,
                                                             native::Callback fired) override;

  /// Between the start of `Run` and `Stop`.
  [[nodiscard]] bool Running() const { return running && !stopped; }
  /// Calls back at the start of each `Run`.
  void WhenRun(native::Callback callback) { run_starts = std::move(callback); }

 private:
  Application& application;
  native::Callback run_starts;
  bool running = false;
  bool stopped = false;
};

}  // namespace quorvel::qt
