// The whole program with real sockets, a real event loop and no screen: windows keep their texts
// and show nothing. The key file is that of the user's documents folder. At SIGTERM the program
// prints a report and ends.

#include <algorithm>
#include <memory>
#include <utility>

#include "app/entry.h"
#include "native/headless/event_loop.h"
#include "native/headless/side.h"
#include "report.h"
#include "support/windows.h"

namespace {

using namespace quorvel;

/// An event loop that calls `before_quit` when a signal asks the program to end.
class Loop final : public headless::EventLoop {
 public:
  std::unique_ptr<native::Subscription> WatchQuit(native::Callback asked) override {
    return EventLoop::WatchQuit([this, asked = std::move(asked)] {
      before_quit();
      asked();
    });
  }
  native::Callback before_quit;
};

class Side final : public native::Side {
 public:
  ::Loop& Loop() override { return loop; }
  test::Windows& Windows() override { return windows; }
  native::Dialogs& Dialogs() override { return mSide->Dialogs(); }
  native::Desktop& Desktop() override { return mSide->Desktop(); }
  FileCalls& Files() override { return mSide->Files(); }
  FolderCalls& Folders() override { return mSide->Folders(); }
  SocketCalls& Sockets() override { return mSide->Sockets(); }
  LinkCalls& Links() override { return mSide->Links(); }

  ::Loop loop;
  test::Windows windows;

 private:
  std::unique_ptr<native::Side> mSide = headless::MakeSide();
};

}  // namespace

int main() {
  Side side;
  side.loop.before_quit = [&side] {
    const auto log = side.windows.FindControl("efLog");
    if (log) bench::PrintReport(std::ranges::count(log->text, '\n'), log->text.size());
  };
  return RunQuorvel(side);
}
