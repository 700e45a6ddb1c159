// The whole program with real sockets, a real event loop and no screen: the windows keep what they
// are told to show. The key file is that of the user's documents folder. SIGTERM ends the program,
// and a report comes out.

#include <algorithm>
#include <memory>

#include "app/entry.h"
#include "native/headless/event_loop.h"
#include "native/headless/side.h"
#include "report.h"
#include "support/windows.h"

namespace {

using namespace quorvel;

class Side final : public native::Side {
 public:
  headless::EventLoop& Loop() override { return loop; }
  test::Windows& Windows() override { return windows; }
  native::Dialogs& Dialogs() override { return mSide->Dialogs(); }
  native::Desktop& Desktop() override { return mSide->Desktop(); }
  FileCalls& Files() override { return mSide->Files(); }
  FolderCalls& Folders() override { return mSide->Folders(); }
  SocketCalls& Sockets() override { return mSide->Sockets(); }
  LinkCalls& Links() override { return mSide->Links(); }

  headless::EventLoop loop;
  test::Windows windows;

 private:
  std::unique_ptr<native::Side> mSide = headless::MakeSide();
};

}  // namespace

int main() {
  Side side;
  std::shared_ptr<test::ShownControl> log;
  side.loop.Post([&] { log = side.windows.FindControl("efLog"); });
  const int status = RunQuorvel(side);
  if (!log) return 1;
  // The drops are not told: the socket is closed.
  bench::PrintReport(std::ranges::count(log->text, '\n'), log->text.size(), 0);
  return status;
}
