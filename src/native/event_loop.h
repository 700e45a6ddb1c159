#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>

namespace quorvel::native {

using Callback = std::function<void()>;

/// Ends what it stands for (a watch, a timer) when it goes, also inside its own callback.
class Subscription {
 public:
  virtual ~Subscription() = default;
};

class EventLoop {
 public:
  virtual ~EventLoop() = default;
  /// Delivers events until `Stop`.
  virtual void Run() = 0;
  /// Ends `Run`, or the next one, and any dialog that is open as if the user had cancelled it.
  virtual void Stop() = 0;
  /// Waits up to `most_ms` for an event, delivers what is there, returns.
  virtual void Turn(int32_t most_ms) = 0;
  /// Calls back whenever `descriptor` has something to read.
  [[nodiscard]] virtual std::unique_ptr<Subscription> Watch(int descriptor, Callback readable) = 0;
  [[nodiscard]] virtual std::unique_ptr<Subscription> Repeat(std::chrono::milliseconds period,
                                                             Callback fired) = 0;
};

}  // namespace quorvel::native
