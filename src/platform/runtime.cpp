#include "platform/runtime.h"

#include <exception>
#include <set>
#include <string>

#include "platform/application.h"
#include "platform/exceptions.h"
#include "platform/native.h"
#include "platform/window.h"

namespace quorvel {

namespace {

enum class Phase : uint8_t { Starting, Running, Quitting, Ended };

struct Runtime {
  native::Side* side = nullptr;
  Ref<Application> app;
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

// Runs a handler and lets nothing out of it. An `EndException` needs no more than to have unwound
// the handler: `Quit` has noted that the application ends.
void Contain(const std::function<void()>& handler) {
  try {
    handler();
  } catch (const EndException&) {
  } catch (const RuntimeException& exception) {
    const bool handled = State().app && State().app->Event_UnhandledException(exception);
    if (!handled) _UnhandledException(exception.ClassName(), exception.what());
  } catch (const std::exception& exception) {
    _UnhandledException("std::exception", exception.what());
  } catch (...) {
    _UnhandledException("unknown exception", "no message");
  }
}

void EndApplication() {
  for (const auto& window : _WindowSupport::Windows()) {
    Contain([&] { window->_UnifiedClose(true); });
  }
  Contain([] { State().app->Event_Close(); });
  State().phase = Phase::Ended;
  Native().Loop().Stop();
}

}  // namespace

void RuntimeInit(native::Side& side) {
  State() = Runtime{};
  State().side = &side;
}

int RuntimeExit() {
  _WindowSupport::ReleaseAll();
  State() = Runtime{};
  return 0;
}

bool HasNative() { return State().side != nullptr; }

native::Side& Native() {
  if (!HasNative()) detail::RaiseNilObject();
  return *State().side;
}

void _RuntimeRegisterAppObject(const Ref<Application>& app) { State().app = app; }
Ref<Application> _GetAppObject() { return State().app; }

void _RuntimeRun() {
  State().phase = Phase::Running;
  Dispatch([] { State().app->Event_Open(); });
  if (State().phase != Phase::Ended) Native().Loop().Run();
}

void Quit(int32_t) {
  if (State().phase >= Phase::Quitting) return;
  State().phase = Phase::Quitting;
  throw EndException("The application is quitting.");
}

void Dispatch(const std::function<void()>& handler) noexcept {
  ++State().depth;
  Contain(handler);
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

void UnwindIfQuitting() {
  if (State().phase == Phase::Quitting && State().depth > 0) {
    throw EndException("The application is quitting.");
  }
}

void StackCheck::Deeper(Sweep sweep) {
  mUnchangedInARow = sweep == Sweep::Changed ? 0 : mUnchangedInARow + 1;
  if (mUnchangedInARow >= 2) {
    throw StackOverflowException("A sender's data would have been handled without end.");
  }
}

}  // namespace quorvel
