#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <type_traits>
#include <utility>

#include "platform/runtime/error_reports.h"
#include "platform/values/object.h"

namespace quorvel {

namespace native {
class Side;
}
class RuntimeException;

/// The application object as the runtime drives it; `Application` implements the three steps.
class RuntimeClient : public Object {
 public:
  /// Waits up to `milliseconds` for an event, delivers the events that are there, returns. -1 waits
  /// for the default of 10 ms. Handlers run nested inside the call.
  void DoEvents(int32_t milliseconds);

  /// The first event of a run.
  virtual void _Open() = 0;
  /// The application ends: closes the windows, then fires the application's Close. Each step runs
  /// in `RunAndReport`, so that a step that raises keeps none of the others from being done.
  virtual void _End() = 0;
  /// True when the application has dealt with the exception, which then goes unreported.
  [[nodiscard]] virtual bool _Unhandled(const RuntimeException& exception) = 0;
};

/// Starts the runtime afresh on a native side, which must outlive `RuntimeExit`.
void RuntimeInit(native::Side& side);
/// Lets go of all that the runtime holds. Returns the status for the process: always 0.
[[nodiscard]] int RuntimeExit();

/// The native side in use. Raises `NilObjectException` when the runtime has not been started.
[[nodiscard]] native::Side& Native();
[[nodiscard]] bool HasNative();

/// Makes `app` the application object; once, before `_RuntimeRun`.
void _RuntimeRegisterAppObject(const Ref<RuntimeClient>& app);
[[nodiscard]] Ref<RuntimeClient> _GetAppObject();
[[nodiscard]] inline Ref<RuntimeClient> getAppObject() { return _GetAppObject(); }

/// Fires the application's Open, delivers events until the application has quit, then returns.
void _RuntimeRun();

/// Ends the application: raises `EndException`, which unwinds the caller to the event loop; there
/// the open windows close, the application's Close fires once, and the loop ends. During a quit,
/// `Quit` returns and changes nothing.
void Quit(int32_t exit_code);

/// The one way by which native callbacks enter the program. Runs `handler`; an exception
/// that comes out becomes the quit (`EndException`) or is reported as unhandled, and the event
/// loop goes on. Nothing is ever thrown through the caller's frames. The report of an exception
/// out of an event of `Origin::Background` shows no message box.
void Dispatch(const std::function<void()>& handler, Origin origin = Origin::User) noexcept;

/// A callback for a native object: runs `handler` (a function of `T&`, or a method of `T`) on
/// `object` through `Dispatch` while `object` lives, and does nothing afterwards. The callback
/// keeps `object` alive while `handler` runs, and at no other time. A `Ref` must hold `object`
/// when the callback is made.
template <class T, class Handler>
[[nodiscard]] std::function<void()> WhileAlive(T& object, Handler handler,
                                               Origin origin = Origin::User) {
  return [weak = object.weak_from_this(), handler = std::move(handler), origin] {
    const auto alive = weak.lock();
    if (!alive) return;
    Dispatch([&] { std::invoke(handler, static_cast<T&>(*alive)); }, origin);
  };
}

/// Runs a step of the quit and lets no exception out: an `EndException` has done its work by
/// unwinding, any other exception is reported as unhandled, without a message box.
void RunAndReport(const std::function<void()>& step) noexcept;

/// Notes that the open of the file at `path` failed with `error_number`, an `errno`. When an
/// exception comes out of the same handler, its report names the file and the reason.
void NoteFailedOpen(const std::string& path, int error_number);

namespace detail {
void RunNested(const std::function<void()>& call);
}  // namespace detail

/// Runs `call`, which delivers events before `call` returns: a dialog, a turn of the event loop.
/// Returns the result of `call`. Raises `EndException` instead when an event asked to quit, so that
/// the caller's handler unwinds too.
template <class Call>
std::invoke_result_t<Call> Nested(const Call& call) {
  if constexpr (std::is_void_v<std::invoke_result_t<Call>>) {
    detail::RunNested(call);
  } else {
    std::invoke_result_t<Call> result{};
    detail::RunNested([&] { result = call(); });
    return result;
  }
}

/// Cooperative yield at the end of each round of a long loop. The program has one thread, so
/// nobody takes the turn.
inline void RuntimeBackgroundTask() {}

}  // namespace quorvel
