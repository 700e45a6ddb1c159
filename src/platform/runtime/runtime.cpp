#include "platform/runtime/runtime.h"

#include <exception>
#include <memory>
#include <set>
#include <string>

#include "native/native.h"
#include "platform/values/exceptions.h"

namespace quorvel {

namespace {

enum class Phase : uint8_t { Starting, Running, Quitting, Ended };

struct Runtime {
  native::Side* side = nullptr;
  Ref<RuntimeClient> app;
  std::unique_ptr<native::Subscription> quit_requests;
  Phase phase = Phase::Starting;
  int depth = 0;
  std::set<std::string> classes_shown;
};

Runtime& State() {
  static Runtime state;
  return state;
}

void ShowOnce(const std::string& class_name, const std::string& line) {
  if (State().phase != Phase::Running) return;
  if (!State().classes_shown.insert(class_name).second) return;
  Native().Dialogs().Message("Something went wrong inside Quorvel, which goes on running.\n\n" +
                             line);
}

void _UnhandledException(const std::string& class_name, const std::string& message) {
  const std::string line = class_name + ": " + message;
  Native().Desktop().ReportError(line);
  ShowOnce(class_name, line);
}

constexpr int32_t kDefaultWaitMs = 10;

[[noreturn]] void RaiseEnd() { throw EndException("The application is quitting."); }

void EndApplication() {
  State().app->_End();
  State().phase = Phase::Ended;
  Native().Loop().Stop();
}

}  // namespace

void RunAndReport(const std::function<void()>& handler) noexcept {
  try {
    handler();
  } catch (const EndException&) {
  } catch (const RuntimeException& exception) {
    const bool handled = State().app && State().app->_Unhandled(exception);
    if (!handled) _UnhandledException(exception.ClassName(), exception.what());
  } catch (const std::exception& exception) {
    _UnhandledException("std::exception", exception.what());
  } catch (...) {
    _UnhandledException("unknown exception", "no message");
  }
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

void Dispatch(const std::function<void()>& handler, Origin) noexcept {
  ++State().depth;
  RunAndReport(handler);
  if (State().phase == Phase::Quitting) {
    // A handler further out goes on unwinding first; its dialog or turn of the loop ends here.
    if (State().depth == 1) {
      EndApplication();
    } else {
      Native().Loop().Stop();
    }
  }
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

void StackCheck::Deeper(Sweep sweep) {
  mUnchangedInARow = sweep == Sweep::Changed ? 0 : mUnchangedInARow + 1;
  if (mUnchangedInARow >= 2) {
    throw StackOverflowException("A sender's data would have been handled without end.");
  }
}

}  // namespace quorvel
