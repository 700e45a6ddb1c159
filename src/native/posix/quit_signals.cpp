#include "native/quit_signals.h"

#include <fcntl.h>
#include <unistd.h>

#include <array>
#include <atomic>
#include <cerrno>
#include <csignal>
#include <utility>

namespace quorvel {

namespace {

constexpr std::array kSignals = {SIGTERM, SIGINT};

// The handler may only use what is set up before the handler is installed, and lock-free atomics.
std::array<struct sigaction, kSignals.size()> gActionsBefore;
std::array<int, 2> gPipe = {-1, -1};
std::atomic<int> gWriteEnd = -1;
static_assert(std::atomic<int>::is_always_lock_free);

void RestoreActions() {
  for (size_t i = 0; i < kSignals.size(); ++i) sigaction(kSignals[i], &gActionsBefore[i], nullptr);
}

extern "C" void OnQuitSignal(int) {
  const int error = errno;
  RestoreActions();
  const ssize_t written = write(gWriteEnd, "", 1);
  static_cast<void>(written);
  errno = error;
}

void Install(size_t index) {
  sigaction(kSignals[index], nullptr, &gActionsBefore[index]);
  if (gActionsBefore[index].sa_handler == SIG_IGN) return;
  struct sigaction action {};
  action.sa_handler = OnQuitSignal;
  action.sa_flags = SA_RESTART;
  sigaction(kSignals[index], &action, nullptr);
}

}  // namespace

QuitSignals::QuitSignals() {
  if (pipe(gPipe.data()) != 0) return;
  for (const int end : gPipe) fcntl(end, F_SETFD, FD_CLOEXEC);
  gWriteEnd = gPipe[1];
  for (size_t i = 0; i < kSignals.size(); ++i) Install(i);
}

QuitSignals::~QuitSignals() {
  if (Descriptor() < 0) return;
  RestoreActions();
  for (int& end : gPipe) close(std::exchange(end, -1));
}

int QuitSignals::Descriptor() const { return gPipe[0]; }

}  // namespace quorvel
