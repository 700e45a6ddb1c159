#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>

namespace quorvel::native {

/// A function of the program that a native object calls. The function lets no exception out. The
/// function may destroy any native object, also the object that is calling, and the function itself
/// with the object; the caller therefore runs a copy, or puts the end of the object off.
using Callback = std::function<void()>;

/// Keeps a callback subscribed. The destructor ends the subscription at once: no call begins after
/// the destructor, also when the callback itself destroys the subscription. A call that is under
/// way then goes on to its end. The event loop outlives all its subscriptions.
class Subscription {
 public:
  virtual ~Subscription() = default;
};

/// The one event loop of the process. All calls, and all callbacks, come from the thread that made
/// the native side. A callback may call any of these functions, `Turn` and dialogs included.
class EventLoop {
 public:
  virtual ~EventLoop() = default;

  /// Delivers events and sleeps in between, until `Stop`. The runtime calls `Run` once in a run of
  /// the program, outside of any callback, after the application's Open.
  virtual void Run() = 0;

  /// Closes all open dialogs as if the user had cancelled each, and ends `Run` as soon as no
  /// callback is on the stack. The runtime calls `Stop` inside callbacks during a quit, once for
  /// each callback on the stack. Outside of `Run`, `Stop` closes dialogs and nothing else: a later
  /// `Run` is not affected.
  virtual void Stop() = 0;

  /// Waits up to `most_ms` milliseconds, at least 0, until an event is there, delivers the events
  /// that are there, and returns. Called inside callbacks, which thus nest.
  virtual void Turn(int32_t most_ms) = 0;

  /// Calls `readable` whenever `descriptor` has bytes to read, or is at its end or in error, again
  /// and again while that holds. The caller keeps the descriptor open, and closes it only after the
  /// subscription has ended.
  [[nodiscard]] virtual std::unique_ptr<Subscription> Watch(int descriptor, Callback readable) = 0;

  /// Calls `fired` each time that `period`, at least 1 ms, has passed. Calls that a busy loop has
  /// missed are not made up for.
  [[nodiscard]] virtual std::unique_ptr<Subscription> Repeat(std::chrono::milliseconds period,
                                                             Callback fired) = 0;

  /// Calls `asked` when the program is to end for another reason than a command in its windows:
  /// SIGTERM or SIGINT came, the desktop's session ends, the dock's menu was used. `Run`, `Turn`
  /// and open dialogs deliver the request; a request that comes earlier waits for them. Without
  /// this subscription, and for a second signal, the system's own ways hold: a signal ends the
  /// process. One subscription at a time; the runtime holds one from before the application's Open
  /// until after `Run`.
  [[nodiscard]] virtual std::unique_ptr<Subscription> WatchQuit(Callback asked) = 0;
};

}  // namespace quorvel::native
