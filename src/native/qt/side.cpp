#include "native/qt/side.h"

#include <clocale>

#include "native/qt/application.h"
#include "native/qt/desktop.h"
#include "native/qt/dialogs.h"
#include "native/qt/event_loop.h"
#include "native/qt/windows.h"

namespace quorvel::qt {

namespace {

class Side final : public native::Side {
 public:
  Side(int& argc, char** argv) : application(argc, argv), loop(application), windows(loop) {
    QCoreApplication::setApplicationName("Quorvel");
    QCoreApplication::setQuitLockEnabled(false);
    QApplication::setQuitOnLastWindowClosed(false);
    // The application has taken on the user's locale; numbers in texts stay what they were.
    std::setlocale(LC_NUMERIC, "C");
  }
  // Widgets that wait for their end cannot outlive the application.
  ~Side() override { QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete); }
  Side(const Side&) = delete;
  Side& operator=(const Side&) = delete;

  native::EventLoop& Loop() override { return loop; }
  native::Windows& Windows() override { return windows; }
  native::Dialogs& Dialogs() override { return dialogs; }
  native::Desktop& Desktop() override { return desktop; }
  FileCalls& Files() override { return PosixFileCalls(); }
  SocketCalls& Sockets() override { return PosixSocketCalls(); }

 private:
  Application application;
  EventLoop loop;
  qt::Windows windows;
  qt::Dialogs dialogs;
  qt::Desktop desktop;
};

}  // namespace

std::unique_ptr<native::Side> MakeSide(int& argc, char** argv) {
  return std::make_unique<Side>(argc, argv);
}

}  // namespace quorvel::qt
