// The sequence of a quit:
// 1. Quit sets the phase to Quitting and raises EndException, which unwinds the running handler.
// 2. Dispatch, which had called that handler, catches the exception. depth counts the calls of
//    Dispatch on the stack.
// 3. At a depth above 1 a handler further out waits in a dialog or in DoEvents. Dispatch calls
//    EventLoop::Stop, so that the dialog ends; Nested, which had opened the dialog, raises
//    EndException again, and the outer handler unwinds to its own Dispatch.
// 4. At depth 1 no handler is left on the stack. EndApplication closes the windows, fires the
//    application's Close, sets the phase to Ended and stops the event loop.
// 5. EventLoop::Run returns, and so does _RuntimeRun. After a quit in the application's Open,
//    _RuntimeRun never calls EventLoop::Run.
// SIGTERM, SIGINT and the desktop's end of the session arrive as an event whose handler calls Quit.

#include "platform/runtime/runtime.h"

#include <exception>
#include <memory>
#include <string>
#include <system_error>
#include <utility>

#include "native/native.h"
#include "platform/values/exceptions.h"
#include "platform/values/text.h"

namespace quorvel {

namespace {

enum class Phase : uint8_t { Starting, Running, Quitting, Ended };

struct Runtime {
  native::Side* side = nullptr;
  Ref<RuntimeClient> app;
  std::unique_ptr<native::Subscription> quit_requests;
  Phase phase = Phase::Starting;
  int depth = 0;
  ErrorReports reports;
  std::string failed_open;  // noted by the innermost handler on the stack
};

Runtime& State() {
  static Runtime state;
  return state;
}

void _UnhandledException(const std::string& class_name, const std::string& message, Origin origin) {
  const Origin shown_to = State().phase == Phase::Running ? origin : Origin::Background;
  const auto [line, box] = State().reports.Report({class_name, message, State().failed_open},
                                                  shown_to, Native().Desktop().Now());
  if (!line.empty()) Native().Desktop().ReportError(line);
  if (!box.empty()) Native().Dialogs().Message(NativeText(Text::FromBytes(box)));
}

void RunAndReportFrom(Origin origin, const std::function<void()>& handler) noexcept {
  try {
    handler();
  } catch (const EndException&) {
  } catch (const RuntimeException& exception) {
    const bool handled = State().app && State().app->_Unhandled(exception);
    if (!handled) _UnhandledException(exception.ClassName(), exception.what(), origin);
  } catch (const std::exception& exception) {
    _UnhandledException("std::exception", exception.what(), origin);
  } catch (...) {
    _UnhandledException("unknown exception", "no message", origin);
  }
}

constexpr int32_t kDefaultWaitMs = 10;

[[noreturn]] void RaiseEnd() { throw EndException("The application is quitting."); }

void EndApplication() {
  State().app->_End();
  State().phase = Phase::Ended;
  Native().Loop().Stop();
}

}  // namespace

void RunAndReport(const std::function<void()>& step) noexcept {
  RunAndReportFrom(Origin::Background, step);
}

void NoteFailedOpen(const std::string& path, int error_number) {
  State().failed_open = path + ": " + std::generic_category().message(error_number);
}

void RuntimeInit(native::Side& side) {
  State() = Runtime{};
  State().side = &side;
}

int RuntimeExit() {
  State() = Runtime{};
  return 0;
}

bool HasNative() { return State().side != nullptr; }

native::Side& Native() {
  if (!HasNative()) detail::RaiseNilObject();
  return *State().side;
}

void _RuntimeRegisterAppObject(const Ref<RuntimeClient>& app) { State().app = app; }
Ref<RuntimeClient> _GetAppObject() { return State().app; }

void _RuntimeRun() {
  State().phase = Phase::Running;
  State().quit_requests = Native().Loop().WatchQuit([] { Dispatch([] { Quit(0); }); });
  Dispatch([] { State().app->_Open(); });
  if (State().phase != Phase::Ended) Native().Loop().Run();
  State().quit_requests.reset();
}

void Quit(int32_t) {
  if (State().phase >= Phase::Quitting) return;
  State().phase = Phase::Quitting;
  RaiseEnd();
}

void Dispatch(const std::function<void()>& handler, Origin origin) noexcept {
  ++State().depth;
  auto outer_failed_open = std::exchange(State().failed_open, {});
  RunAndReportFrom(origin, handler);
  if (State().phase == Phase::Quitting) {
    if (State().depth == 1) {
      EndApplication();
    } else {
      Native().Loop().Stop();
    }
  }
  State().failed_open = std::move(outer_failed_open);
  --State().depth;
}

void detail::RunNested(const std::function<void()>& call) {
  call();
  if (State().phase == Phase::Quitting && State().depth > 0) RaiseEnd();
}

void RuntimeClient::DoEvents(int32_t milliseconds) {
  const int32_t most_ms = milliseconds < 0 ? kDefaultWaitMs : milliseconds;
  Nested([&] { Native().Loop().Turn(most_ms); });
}

}  // namespace quorvel
